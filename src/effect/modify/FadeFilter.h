// フェード: fades the object in after its start and out before its end; times in seconds.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class FadeFilter final : public EffectInstance<FadeFilter> {
 public:
  static const EffectInfo kInfo;
  FadeFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
