// 図形: a built-in figure or a figure file, drawn at a size in a colour.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class FigureLoad final : public EffectInstance<FigureLoad> {
 public:
  static const EffectInfo kInfo;
  FigureLoad() : EffectInstance(kInfo) {}
};

}  // namespace Effect
