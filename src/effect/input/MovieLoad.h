// 動画ファイル: the picture and sound of a movie file, played from a position at a speed.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class MovieLoad final : public EffectInstance<MovieLoad> {
 public:
  static const EffectInfo kInfo;
  MovieLoad() : EffectInstance(kInfo) {}
};

}  // namespace Effect
