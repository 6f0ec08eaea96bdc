#include "effect/output/AudioOutput.h"

#include "effect/item/EffectItemNumber.h"
#include "media/audio/AudioBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"音量", 100, 0, 1000, 0.01),
    number(L"左右", 0, -100, 100, 0.01),
};

}  // namespace

const EffectInfo AudioOutput::kInfo{L"音声再生", EffectType::Output, EffectMedia::Audio,
                                    EffectMedia::Audio, L"", kItems};

AudioOutput::AudioOutput()
    : EffectInstance(kInfo), volume_(item<EffectItemNumber>(L"音量")), pan_(item<EffectItemNumber>(L"左右")) {}

void AudioOutput::outputAudio(Render::ObjectContext& context, std::shared_ptr<Media::AudioBuffer> block) {
  if (!block) return;
  const ItemContext items = Render::itemsAt(context);
  applyVolumeAndPan(context.gainLeft, context.gainRight, volume_.getValueAt(items), pan_.getValueAt(items));
  mix(context, *block);
}

}  // namespace Effect
