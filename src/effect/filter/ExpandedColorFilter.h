// 拡張色設定: a colour with movements that stands in for a colour item of the effect in front
// of it; the image passes unchanged.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ExpandedColorFilter final : public EffectInstance<ExpandedColorFilter> {
 public:
  static const EffectInfo kInfo;
  ExpandedColorFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
