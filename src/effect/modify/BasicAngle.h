// 回転: turns the object about X, Y, Z, in degrees.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicAngle final : public EffectInstance<BasicAngle> {
 public:
  static const EffectInfo kInfo;
  BasicAngle() : EffectInstance(kInfo) {}
};

}  // namespace Effect
