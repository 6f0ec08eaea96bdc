// ぼかし: the box blur of an image; its prototype serves the blur of many other effects.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BokashiFilter final : public EffectInstance<BokashiFilter> {
 public:
  static const EffectInfo kInfo;
  BokashiFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
