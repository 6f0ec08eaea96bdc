// ワイプ: reveals the object after its start and hides it before its end through a wipe mask; times in seconds.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class WipeFilter final : public EffectInstance<WipeFilter> {
 public:
  static const EffectInfo kInfo;
  WipeFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
