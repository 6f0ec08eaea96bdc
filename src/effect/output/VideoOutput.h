// 標準描画: puts the object's image on the frame, moved, turned, scaled and blended.
#pragma once

#include "effect/output/BasicOutput.h"

namespace Effect {

class VideoOutput final : public EffectInstance<VideoOutput, BasicOutput> {
 public:
  static const EffectInfo kInfo;
  VideoOutput() : EffectInstance(kInfo) {}
};

}  // namespace Effect
