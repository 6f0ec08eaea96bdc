// 音量フェード: raises the volume from silence after the object's start and lowers it to
// silence before its end; times in seconds.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemNumber;

class AudioFadeFilter final : public EffectInstance<AudioFadeFilter> {
 public:
  static const EffectInfo kInfo;
  AudioFadeFilter();

  // A straight ramp of the gain, sample by sample, over the object's own sample position,
  // so a fade lasts the same whatever the frame rate and however frames cut it.
  std::shared_ptr<Media::AudioBuffer> filterAudio(Render::ObjectContext& context,
                                                  std::shared_ptr<Media::AudioBuffer> block) override;

 private:
  const EffectItemNumber& fadeIn_;
  const EffectItemNumber& fadeOut_;
};

}  // namespace Effect
