#include "effect/input/AudioBufferLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    check(L"オーディオバッファをクリア", false),
};

}  // namespace

const EffectInfo AudioBufferLoad::kInfo{L"オーディオバッファ", EffectType::Input, EffectMedia::Audio,
                                        EffectMedia::Audio, L"", kItems};

}  // namespace Effect

#include "effect/item/EffectItemCheck.h"
#include "media/audio/AudioBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

std::shared_ptr<Media::AudioBuffer> AudioBufferLoad::inputAudio(Render::ObjectContext& context) {
  if (!context.audioTarget) return nullptr;
  auto copy = std::make_shared<Media::AudioBuffer>(context.audioTarget->clone());
  if (item<EffectItemCheck>(L"オーディオバッファをクリア").value()) context.audioTarget->clear();
  return copy;
}

}  // namespace Effect
