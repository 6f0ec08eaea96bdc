// 方向ブラー: a motion blur along one direction.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BlurDirectionFilter final : public EffectInstance<BlurDirectionFilter> {
 public:
  static const EffectInfo kInfo;
  BlurDirectionFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
