// ノイズ除去: averages away small differences between neighbouring pixels and keeps edges.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class NoiseReductionFilter final : public EffectInstance<NoiseReductionFilter> {
 public:
  static const EffectInfo kInfo;
  NoiseReductionFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
