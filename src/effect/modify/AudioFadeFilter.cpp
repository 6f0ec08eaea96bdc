#include "effect/modify/AudioFadeFilter.h"

#include <algorithm>
#include <cmath>

#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/modify/AudioFilterBlock.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

// The same times as フェード, so that picture and sound of one object can fade alike.
constexpr ItemRow kItems[] = {
    number(L"イン", 0.5, 0, 10, 0.01),
    number(L"アウト", 0.5, 0, 10, 0.01),
};

}  // namespace

const EffectInfo AudioFadeFilter::kInfo{L"音量フェード", EffectType::Filter, EffectMedia::Audio, EffectMedia::Audio,
                                        L"音声効果", kItems};

AudioFadeFilter::AudioFadeFilter()
    : EffectInstance(kInfo), fadeIn_(item<EffectItemNumber>(L"イン")), fadeOut_(item<EffectItemNumber>(L"アウト")) {}

std::shared_ptr<Media::AudioBuffer> AudioFadeFilter::filterAudio(Render::ObjectContext& context,
                                                                 std::shared_ptr<Media::AudioBuffer> block) {
  if (!block || block->empty() || !context.object || !context.scene || context.scene->videoRate <= 0) return block;
  const Edit::Object& object = *context.object;
  const ItemContext items = Render::itemsAt(context);
  const double rate = context.sampleRate;
  const double inSamples = fadeIn_.getValueAt(items) * rate;
  const double outSamples = fadeOut_.getValueAt(items) * rate;
  // The object's length on the scene's sample grid: from its first frame's first sample
  // to the first sample after its last frame.
  const double frameSeconds = static_cast<double>(context.scene->videoScale) / context.scene->videoRate;
  const double length = std::llround(rate * (object.end + 1.0) * frameSeconds) -
                        std::llround(rate * static_cast<double>(object.start) * frameSeconds);
  const double first = static_cast<double>(context.objectSample);
  const std::uint32_t count = block->sampleCount();
  const auto gainAt = [&](double sample) {
    double gain = 1.0;
    if (inSamples > 0.0) gain = std::min(gain, sample / inSamples);
    if (outSamples > 0.0) gain = std::min(gain, (length - sample) / outSamples);
    return static_cast<float>(std::clamp(gain, 0.0, 1.0));
  };
  // Between the two fades the block passes untouched.
  if (first >= inSamples && first + count <= length - outSamples) return block;
  block = ownStereoBlock(std::move(block));
  float* left = block->channelData(0);
  float* right = block->channelData(1);
  for (std::uint32_t i = 0; i < count; ++i) {
    const float gain = gainAt(first + i);
    left[i] *= gain;
    right[i] *= gain;
  }
  return block;
}

}  // namespace Effect
