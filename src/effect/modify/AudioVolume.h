// 音量調整: the volume in percent and the balance between left and right, applied in the
// chain before the output's own volume.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemNumber;

class AudioVolume final : public EffectInstance<AudioVolume> {
 public:
  static const EffectInfo kInfo;
  AudioVolume();

  // The gains of 音声再生 for the same values, on the samples themselves.
  std::shared_ptr<Media::AudioBuffer> filterAudio(Render::ObjectContext& context,
                                                  std::shared_ptr<Media::AudioBuffer> block) override;

 private:
  const EffectItemNumber& volume_;
  const EffectItemNumber& pan_;
};

}  // namespace Effect
