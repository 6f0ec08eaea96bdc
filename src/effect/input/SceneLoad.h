// シーン: the picture and sound of another scene of the project, played like a movie.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class SceneLoad final : public EffectInstance<SceneLoad> {
 public:
  static const EffectInfo kInfo;
  SceneLoad() : EffectInstance(kInfo) {}
};

}  // namespace Effect
