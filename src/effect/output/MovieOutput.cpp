#include "effect/output/MovieOutput.h"

#include "effect/item/EffectItemNumber.h"
#include "effect/output/BasicOutputItems.h"
#include "media/audio/AudioBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

// The standard drawing, and the volume of the movie's sound.
constexpr auto kItems = joinItems(kBasicOutputItems, std::array{number(L"音量", 100, 0, 1000, 0.01)});

}  // namespace

const EffectInfo MovieOutput::kInfo{L"映像再生", EffectType::Output, EffectMedia::Both, EffectMedia::Both, L"", kItems};

MovieOutput::MovieOutput() : EffectInstance(kInfo), volume_(item<EffectItemNumber>(L"音量")) {}

void MovieOutput::outputAudio(Render::ObjectContext& context, std::shared_ptr<Media::AudioBuffer> block) {
  if (!block) return;
  applyVolumeAndPan(context.gainLeft, context.gainRight, volume_.getValueAt(Render::itemsAt(context)), 0.0);
  mix(context, *block);
}

}  // namespace Effect
