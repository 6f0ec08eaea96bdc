// ディスプレイスメントマップ: moves, scales or turns the pixels by the colours of a map image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class DisplacementFilter final : public EffectInstance<DisplacementFilter> {
 public:
  static const EffectInfo kInfo;
  DisplacementFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
