// 縁取り: a border of a colour or a tiled pattern around the opaque part of an image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BorderFilter final : public EffectInstance<BorderFilter> {
 public:
  static const EffectInfo kInfo;
  BorderFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
