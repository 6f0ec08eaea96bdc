// 基本出力: puts the object's image on the frame by whole pixels, without 3D.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class SimpleOutput final : public EffectInstance<SimpleOutput> {
 public:
  static const EffectInfo kInfo;
  SimpleOutput() : EffectInstance(kInfo) {}
};

}  // namespace Effect
