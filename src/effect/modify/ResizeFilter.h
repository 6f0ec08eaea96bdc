// リサイズ: redraws the image at another size, by a ratio or in pixels.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ResizeFilter final : public EffectInstance<ResizeFilter> {
 public:
  static const EffectInfo kInfo;
  ResizeFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
