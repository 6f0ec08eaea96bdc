// 凸エッジ: lights and shades the edges of an image so that it looks raised.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BevelFilter final : public EffectInstance<BevelFilter> {
 public:
  static const EffectInfo kInfo;
  BevelFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
