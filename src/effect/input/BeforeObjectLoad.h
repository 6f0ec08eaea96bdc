// 直前オブジェクト: takes over the final image of the object drawn just before it.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BeforeObjectLoad final : public EffectInstance<BeforeObjectLoad> {
 public:
  static const EffectInfo kInfo;
  BeforeObjectLoad() : EffectInstance(kInfo) {}
};

}  // namespace Effect
