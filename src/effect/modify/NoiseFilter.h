// ノイズ: multiplies the image by moving value noise.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class NoiseFilter final : public EffectInstance<NoiseFilter> {
 public:
  static const EffectInfo kInfo;
  NoiseFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
