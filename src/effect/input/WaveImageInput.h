// 音声波形表示: the sound of a file, or of the scene, drawn as a wave or a spectrum.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class WaveImageInput final : public EffectInstance<WaveImageInput> {
 public:
  static const EffectInfo kInfo;
  WaveImageInput() : EffectInstance(kInfo) {}
};

}  // namespace Effect
