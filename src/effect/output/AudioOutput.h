// 音声再生: mixes the object's sound into the scene at a volume and pan.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class AudioOutput final : public EffectInstance<AudioOutput> {
 public:
  static const EffectInfo kInfo;
  AudioOutput() : EffectInstance(kInfo) {}
};

}  // namespace Effect
