// オーディオバッファ: a copy of the scene's audio mix so far, as the object's sound.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class AudioBufferLoad final : public EffectInstance<AudioBufferLoad> {
 public:
  static const EffectInfo kInfo;
  AudioBufferLoad() : EffectInstance(kInfo) {}

  std::shared_ptr<Media::AudioBuffer> inputAudio(Render::ObjectContext& context) override;
};

}  // namespace Effect
