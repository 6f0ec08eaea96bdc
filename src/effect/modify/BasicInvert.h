// 反転: flips the image and inverts its luma, hue or transparency.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicInvert final : public EffectInstance<BasicInvert> {
 public:
  static const EffectInfo kInfo;
  BasicInvert() : EffectInstance(kInfo) {}
};

}  // namespace Effect
