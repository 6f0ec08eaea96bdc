#include "effect/modify/AudioVolume.h"

#include "effect/item/EffectItemNumber.h"
#include "effect/modify/AudioFilterBlock.h"
#include "effect/output/OutputAudioEffect.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

// The same ranges as 音声再生, so that a value means the same in either place.
constexpr ItemRow kItems[] = {
    number(L"音量", 100, 0, 1000, 0.01),
    number(L"左右", 0, -100, 100, 0.01),
};

void scale(float* samples, std::uint32_t count, float gain) {
  for (std::uint32_t i = 0; i < count; ++i) samples[i] *= gain;
}

}  // namespace

const EffectInfo AudioVolume::kInfo{L"音量調整", EffectType::Filter, EffectMedia::Audio, EffectMedia::Audio,
                                    L"音声効果", kItems};

AudioVolume::AudioVolume()
    : EffectInstance(kInfo), volume_(item<EffectItemNumber>(L"音量")), pan_(item<EffectItemNumber>(L"左右")) {}

std::shared_ptr<Media::AudioBuffer> AudioVolume::filterAudio(Render::ObjectContext& context,
                                                             std::shared_ptr<Media::AudioBuffer> block) {
  if (!block || block->empty()) return block;
  const ItemContext items = Render::itemsAt(context);
  float left = 1.0f;
  float right = 1.0f;
  OutputAudioEffect::applyVolumeAndPan(left, right, volume_.getValueAt(items), pan_.getValueAt(items));
  if (left == 1.0f && right == 1.0f) return block;
  block = ownStereoBlock(std::move(block));
  scale(block->channelData(0), block->sampleCount(), left);
  scale(block->channelData(1), block->sampleCount(), right);
  return block;
}

}  // namespace Effect
