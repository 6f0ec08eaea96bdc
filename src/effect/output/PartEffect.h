// 部分フィルタ: runs the filters behind it on a masked part of what the frame holds.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class PartEffect final : public EffectInstance<PartEffect> {
 public:
  static const EffectInfo kInfo;
  PartEffect() : EffectInstance(kInfo) {}
};

}  // namespace Effect
