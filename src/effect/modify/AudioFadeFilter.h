// 音量フェード: raises the volume from silence after the object's start and lowers it to
// silence before its end; times in seconds.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class AudioFadeFilter final : public EffectInstance<AudioFadeFilter> {
 public:
  static const EffectInfo kInfo;
  AudioFadeFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
