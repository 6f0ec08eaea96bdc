// 拡散光: a soft diffuse light laid over an image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class DiffusionFilter final : public EffectInstance<DiffusionFilter> {
 public:
  static const EffectInfo kInfo;
  DiffusionFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
