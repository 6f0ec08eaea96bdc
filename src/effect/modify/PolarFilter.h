// 極座標変換: wraps the image around a centre, its rows becoming rings.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class PolarFilter final : public EffectInstance<PolarFilter> {
 public:
  static const EffectInfo kInfo;
  PolarFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
