// 色調補正: brightness, contrast, hue, luminance and saturation of an image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ColorFilter final : public EffectInstance<ColorFilter> {
 public:
  static const EffectInfo kInfo;
  ColorFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
