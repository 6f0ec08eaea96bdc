#include "effect/input/AudioLoad.h"

#include "effect/input/SourceFiles.h"
#include "effect/item/EffectItemFile.h"
#include "media/audio/AudioBuffer.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"再生位置", 0, 0, 100000, 0.001),
    number(L"再生速度", 100, -2000, 2000, 0.01).notifying(),
    file(L"ファイル", L"AudioFile").notifying(),
    integer(L"トラック", 1, 1, 100).notifying(),
    check(L"ループ再生", false),
};

}  // namespace

const EffectInfo AudioLoad::kInfo{L"音声ファイル", EffectType::Input, EffectMedia::Audio,
                                  EffectMedia::Audio, L"", kItems};

AudioLoad::AudioLoad() : EffectInstance(kInfo), InputMovieEffect(*this, SourceKind::Audio) {}

void AudioLoad::prepareAudio(Render::ObjectContext& context) { preloadAudio(context); }

std::shared_ptr<Media::AudioBuffer> AudioLoad::inputAudio(Render::ObjectContext& context) {
  return readAudio(context);
}

std::wstring AudioLoad::getDisplayName() const { return fileDisplayName(*this, *fileItem_); }

bool AudioLoad::itemEvent(ItemEvent& event) { return movieItemEvent(event); }

bool AudioLoad::acceptsFile(const std::wstring& path) const { return canReadSource(path, MediaAccess::Kind::Audio); }

}  // namespace Effect
