// カラーキー: makes the colours within a luma and chroma distance of a key colour transparent.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ColorKeyFilter final : public EffectInstance<ColorKeyFilter> {
 public:
  static const EffectInfo kInfo;
  ColorKeyFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
