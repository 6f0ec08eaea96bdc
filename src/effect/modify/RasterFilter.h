// ラスター: shifts each row (or column) of the image along a sine or a random wave.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class RasterFilter final : public EffectInstance<RasterFilter> {
 public:
  static const EffectInfo kInfo;
  RasterFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
