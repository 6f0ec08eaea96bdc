// 単色化: pulls the colours of an image towards one colour, optionally keeping their luma.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class MonochromeFilter final : public EffectInstance<MonochromeFilter> {
 public:
  static const EffectInfo kInfo;
  MonochromeFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
