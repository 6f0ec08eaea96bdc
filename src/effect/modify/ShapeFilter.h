// シャープ: sharpens the image against a blurred copy of itself.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ShapeFilter final : public EffectInstance<ShapeFilter> {
 public:
  static const EffectInfo kInfo;
  ShapeFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
