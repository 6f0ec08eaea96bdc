// 音声再生: mixes the object's sound into the scene at a volume and pan.
#pragma once

#include "effect/EffectBase.h"
#include "effect/output/OutputAudioEffect.h"

namespace Effect {

class EffectItemNumber;

class AudioOutput final : public EffectInstance<AudioOutput>, public OutputAudioEffect {
 public:
  static const EffectInfo kInfo;
  AudioOutput();

  // Audio object thread: the items at the context's moment, then the mix.
  void outputAudio(Render::ObjectContext& context, std::shared_ptr<Media::AudioBuffer> block) override;

 private:
  const EffectItemNumber& volume_;
  const EffectItemNumber& pan_;
};

}  // namespace Effect
