// 音量調整: the volume in percent and the balance between left and right, applied in the
// chain before the output's own volume.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class AudioVolume final : public EffectInstance<AudioVolume> {
 public:
  static const EffectInfo kInfo;
  AudioVolume() : EffectInstance(kInfo) {}
};

}  // namespace Effect
