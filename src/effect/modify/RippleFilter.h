// 波紋: concentric waves that spread from a centre and shift the pixels they pass.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class RippleFilter final : public EffectInstance<RippleFilter> {
 public:
  static const EffectInfo kInfo;
  RippleFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
