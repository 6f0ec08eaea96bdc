// 閃光: a burst of light streaming from a centre point behind or in front of an image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class FlashFilter final : public EffectInstance<FlashFilter> {
 public:
  static const EffectInfo kInfo;
  FlashFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
