// パーティクル出力: repeats the object's image as a swarm of particles in one draw.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ParticleOutput final : public EffectInstance<ParticleOutput> {
 public:
  static const EffectInfo kInfo;
  ParticleOutput() : EffectInstance(kInfo) {}
};

}  // namespace Effect
