// インターレース解除: rebuilds the rows of one field from the other, or blends both.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class DeinterlaceFilter final : public EffectInstance<DeinterlaceFilter> {
 public:
  static const EffectInfo kInfo;
  DeinterlaceFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
