// 音声ファイル: the sound of an audio file, played from a position at a speed.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class AudioLoad final : public EffectInstance<AudioLoad> {
 public:
  static const EffectInfo kInfo;
  AudioLoad() : EffectInstance(kInfo) {}
};

}  // namespace Effect
