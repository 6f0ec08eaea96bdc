// 発光: bright parts of an image spread as light over several blur levels.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BloomFilter final : public EffectInstance<BloomFilter> {
 public:
  static const EffectInfo kInfo;
  BloomFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
