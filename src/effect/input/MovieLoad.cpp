#include "effect/input/MovieLoad.h"

#include "effect/input/SourceFiles.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemYUV.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/image/ConvertParameters.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    playPosition(L"再生位置", 0, 0, 100000, 0.001),
    number(L"再生速度", 100, -2000, 2000, 0.01).notifying(),
    file(L"ファイル", L"MovieFile").notifying(),
    integer(L"トラック", 1, 1, 100).notifying(),
    check(L"ループ再生", false),
    hiddenInteger(L"音声付き", 0),
    yuv(L"YUV"),
};

}  // namespace

const EffectInfo MovieLoad::kInfo{L"動画ファイル", EffectType::Input, EffectMedia::Both,
                                  EffectMedia::Both, L"", kItems};

MovieLoad::MovieLoad() : EffectInstance(kInfo), InputMovieEffect(*this, SourceKind::Video) {}

void MovieLoad::prepareVideo(Render::ObjectContext& context) { preloadVideo(context); }

std::unique_ptr<Media::ResourceBuffer> MovieLoad::inputVideo(Render::ObjectContext& context) {
  return readVideo(context, yuvConvertParameters(item<EffectItemYUV>(L"YUV")));
}

void MovieLoad::prepareAudio(Render::ObjectContext& context) { preloadAudio(context); }

std::shared_ptr<Media::AudioBuffer> MovieLoad::inputAudio(Render::ObjectContext& context) {
  return readAudio(context);
}

std::wstring MovieLoad::getDisplayName() const { return fileDisplayName(*this, *fileItem_); }

std::int32_t MovieLoad::getMediaFlag(std::int32_t query) const {
  if (query == 0) return soundKnown_ ? 1 : 0;
  if (query == 1) return hasAudio() ? std::max(trackCount(), 1) : 0;
  return 0;
}

bool MovieLoad::itemEvent(ItemEvent& event) {
  if (event.type == ItemEvent::OpenFileMenu) return false;
  const bool handled = movieItemEvent(event);
  if (event.type == ItemEvent::ItemChanged || event.type == ItemEvent::FileHanded) {
    soundKnown_ = isPlayable() && hasAudio();
    item<EffectItemInteger>(L"音声付き").setValue(soundKnown_ ? 1 : 0);
  }
  return handled;
}

bool MovieLoad::acceptsFile(const std::wstring& path) const { return canReadSource(path, MediaAccess::Kind::Video); }

}  // namespace Effect
