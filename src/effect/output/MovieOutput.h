// 映像再生: the drawing of 標準描画 and the sound of the object at a volume.
#pragma once

#include "effect/output/BasicOutput.h"

namespace Effect {

class MovieOutput final : public EffectInstance<MovieOutput, BasicOutput> {
 public:
  static const EffectInfo kInfo;
  MovieOutput() : EffectInstance(kInfo) {}
};

}  // namespace Effect
