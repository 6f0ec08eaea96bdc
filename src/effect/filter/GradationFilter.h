// グラデーション: a linear, circular, square or convex gradient laid over an image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class GradationFilter final : public EffectInstance<GradationFilter> {
 public:
  static const EffectInfo kInfo;
  GradationFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
