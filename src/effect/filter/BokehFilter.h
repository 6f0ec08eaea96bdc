// レンズブラー: a blur whose kernel has the shape of a figure, with bright highlights.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BokehFilter final : public EffectInstance<BokehFilter> {
 public:
  static const EffectInfo kInfo;
  BokehFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
