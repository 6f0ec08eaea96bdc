// 映像再生: the drawing of 標準描画 and the sound of the object at a volume.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class MovieOutput final : public EffectInstance<MovieOutput> {
 public:
  static const EffectInfo kInfo;
  MovieOutput() : EffectInstance(kInfo) {}
};

}  // namespace Effect
