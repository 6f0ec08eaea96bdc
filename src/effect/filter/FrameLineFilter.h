// 枠線: a frame line, optionally rounded, around an image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class FrameLineFilter final : public EffectInstance<FrameLineFilter> {
 public:
  static const EffectInfo kInfo;
  FrameLineFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
