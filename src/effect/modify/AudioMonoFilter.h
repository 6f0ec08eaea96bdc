// モノラル化: makes both channels carry the same sound, from their mean or from one side.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class AudioMonoFilter final : public EffectInstance<AudioMonoFilter> {
 public:
  static const EffectInfo kInfo;
  AudioMonoFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
