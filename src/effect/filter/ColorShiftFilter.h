// 色ずれ: shifts two colour channels of an image apart.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ColorShiftFilter final : public EffectInstance<ColorShiftFilter> {
 public:
  static const EffectInfo kInfo;
  ColorShiftFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
