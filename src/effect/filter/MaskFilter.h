// マスク: keeps, or with 反転 removes, what lies under a figure, scene or image mask.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class MaskFilter final : public EffectInstance<MaskFilter> {
 public:
  static const EffectInfo kInfo;
  MaskFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
