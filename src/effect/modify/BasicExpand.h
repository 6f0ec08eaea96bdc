// 領域拡張: adds transparent or edge-repeating margins around the image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicExpand final : public EffectInstance<BasicExpand> {
 public:
  static const EffectInfo kInfo;
  BasicExpand() : EffectInstance(kInfo) {}
};

}  // namespace Effect
