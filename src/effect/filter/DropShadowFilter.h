// ドロップシャドウ: a blurred shadow of an image, drawn behind it or as an object of its own.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class DropShadowFilter final : public EffectInstance<DropShadowFilter> {
 public:
  static const EffectInfo kInfo;
  DropShadowFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
