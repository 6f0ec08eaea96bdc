#include "effect/output/OutputAudioEffect.h"

#include <algorithm>

#include "edit/Object.h"
#include "effect/output/GroupAudioControl.h"
#include "media/audio/AudioBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

// A plain loop, which the compiler vectorises over the aligned channels and contracts to
// fused multiply-adds where the target has them; std::fma would be a library call per
// sample on the base instruction set.
void addScaled(float* __restrict target, const float* __restrict source, float gain, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) target[i] += gain * source[i];
}

}  // namespace

void OutputAudioEffect::applyVolumeAndPan(float& left, float& right, double volume, double pan) {
  const double v = volume / 100.0;
  const double p = pan / 100.0;
  left = static_cast<float>(left * v);
  right = static_cast<float>(right * v);
  if (p > 0.0) left = static_cast<float>(left * (1.0 - p));
  if (p < 0.0) right = static_cast<float>(right * (1.0 + p));
}

void OutputAudioEffect::mix(Render::ObjectContext& context, const Media::AudioBuffer& block) {
  Media::AudioBuffer* target = context.audioTarget;
  if (!target || target->empty() || block.empty()) return;
  if (context.group) {
    if (const auto* group = dynamic_cast<const GroupAudioControl*>(context.group->effects.front().get())) {
      context.gainLeft *= group->leftGain();
      context.gainRight *= group->rightGain();
    }
  }
  const std::uint32_t count = std::min(target->sampleCount(), block.sampleCount());
  addScaled(target->channelData(0), block.channelData(0), context.gainLeft, count);
  if (target->channels() > 1) addScaled(target->channelData(1), block.channelData(1), context.gainRight, count);
}

}  // namespace Effect
