// ライト: light on the edges of an image from inside and outside, or from behind.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class LightFilter final : public EffectInstance<LightFilter> {
 public:
  static const EffectInfo kInfo;
  LightFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
