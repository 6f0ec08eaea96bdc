// 振動: shakes the object's position by a periodic or random amount.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class QuakeFilter final : public EffectInstance<QuakeFilter> {
 public:
  static const EffectInfo kInfo;
  QuakeFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
