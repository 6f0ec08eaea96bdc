// 放射ブラー: a blur along the rays from a centre point.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BlurFilter final : public EffectInstance<BlurFilter> {
 public:
  static const EffectInfo kInfo;
  BlurFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
