// 映像再生: the drawing of 標準描画 and the sound of the object at a volume.
#pragma once

#include "effect/output/BasicOutput.h"
#include "effect/output/OutputAudioEffect.h"

namespace Effect {

class EffectItemNumber;

class MovieOutput final : public EffectInstance<MovieOutput, BasicOutput>, public OutputAudioEffect {
 public:
  static const EffectInfo kInfo;
  MovieOutput();

  // Audio object thread: the movie's sound at 音量, centred.
  void outputAudio(Render::ObjectContext& context, std::shared_ptr<Media::AudioBuffer> block) override;

 private:
  const EffectItemNumber& volume_;
};

}  // namespace Effect
