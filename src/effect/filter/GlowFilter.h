// グロー: a glow or a star of rays around the bright parts of an image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class GlowFilter final : public EffectInstance<GlowFilter> {
 public:
  static const EffectInfo kInfo;
  GlowFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
