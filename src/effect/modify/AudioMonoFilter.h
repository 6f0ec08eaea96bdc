// モノラル化: makes both channels carry the same sound, from their mean or from one side.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemSelect;

class AudioMonoFilter final : public EffectInstance<AudioMonoFilter> {
 public:
  static const EffectInfo kInfo;
  AudioMonoFilter();

  // A mono block, which the mix and later filters read on both sides.
  std::shared_ptr<Media::AudioBuffer> filterAudio(Render::ObjectContext& context,
                                                  std::shared_ptr<Media::AudioBuffer> block) override;

 private:
  const EffectItemSelect& source_;
};

}  // namespace Effect
