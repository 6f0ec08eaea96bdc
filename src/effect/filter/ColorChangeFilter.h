// 特定色域変換: turns the colours near one key colour into another colour.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ColorChangeFilter final : public EffectInstance<ColorChangeFilter> {
 public:
  static const EffectInfo kInfo;
  ColorChangeFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
