// クロマキー: makes the colours near a key hue and saturation transparent.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ChromaKeyFilter final : public EffectInstance<ChromaKeyFilter> {
 public:
  static const EffectInfo kInfo;
  ChromaKeyFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
