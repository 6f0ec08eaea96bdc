#include "effect/input/WaveImageInput.h"

#include <cmath>
#include <mutex>

#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/input/SourceFiles.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemColor.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/wave/WaveImage.h"
#include "render/ObjectContext.h"
#include "render/RenderVideoWorker.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"横幅", 800, 10, 4000, 1),
    number(L"高さ", 400, 10, 4000, 1),
    number(L"再生位置", 0, 0, 20000, 0.001),
    number(L"再生速度", 100, -2000, 2000, 0.01).notifying(),
    number(L"音量", 100, 0, 1000, 0.01),
    file(L"ファイル", L"AudioFile").notifying(),
    color(L"波形の色", kWhite),
    button(L"波形のプリセット", 0.666f, 1.0f),
    checkButton(L"スペクトラム表示", false, 0.0f, 0.333f),
    checkButton(L"ミラー表示", false, 0.333f, 0.666f),
    integer(L"横解像度", 0, 0, 4000),
    integer(L"縦解像度", 0, 0, 4000),
    integer(L"横スペース", 0, 0, 100),
    integer(L"縦スペース", 0, 0, 100),
};

// A wave holds at most this many values, and so does a spectrum.
constexpr std::size_t kMostValues = 8000;
// Mixes asked for ahead and not yet drawn, at most: the walker runs only a few frames
// ahead of the drawing.
constexpr std::size_t kMostPendingFrames = 16;
// A spectrum's magnitudes reach 32767 and more; this brings 8192 to full height.
constexpr double kSpectrumScale = 0.00012207031;

// The first sample of a frame on the scene's grid.
std::int64_t frameStart(const Edit::Scene& scene, std::int64_t frame) {
  return std::llround(static_cast<double>(scene.audioRate) * frame * scene.videoScale / scene.videoRate);
}

}  // namespace

// The drawing, made at the first use on the device and shared by all instances.
struct WaveImageInput::Common {
  std::mutex mutex;
  std::unique_ptr<Media::WaveImage> image;
};

const EffectInfo WaveImageInput::kInfo{L"音声波形表示", EffectType::Input, EffectMedia::Video,
                                       EffectMedia::Video, L"カスタムオブジェクト", kItems};

WaveImageInput::WaveImageInput()
    : EffectInstance(kInfo), InputMovieEffect(*this, SourceKind::Audio), common_(std::make_shared<Common>()) {}

WaveImageInput::~WaveImageInput() = default;

void WaveImageInput::shareCommonResource(const EffectBase& prototype) {
  if (const auto* other = dynamic_cast<const WaveImageInput*>(&prototype)) common_ = other->common_;
}

Render::ObjectContext WaveImageInput::soundOfFrame(const Render::ObjectContext& context) {
  Render::ObjectContext sound = context;
  if (!context.scene || !context.object || context.scene->videoRate <= 0 || context.scene->videoScale <= 0) {
    return sound;
  }
  const Edit::Scene& scene = *context.scene;
  const std::int64_t first = frameStart(scene, context.frame);
  sound.sampleRate = static_cast<std::uint32_t>(scene.audioRate);
  sound.sampleCount = static_cast<std::uint32_t>(frameStart(scene, context.frame + 1) - first);
  sound.objectSample = first - frameStart(scene, context.object->start);
  return sound;
}

void WaveImageInput::prepareVideo(Render::ObjectContext& context) {
  if (!fileItem_->getFilePath()->empty()) {
    preloadAudio(soundOfFrame(context));
    return;
  }
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (!media || !context.scene) return;
  MediaAccess::SoundWait wait = media->startSceneSound(context.scene->id, context.frame);
  std::lock_guard lock(pendingMutex_);
  pending_[context.frame] = std::move(wait);
  // Frames whose drawing was dropped (a preview that moved on) are never taken.
  while (pending_.size() > kMostPendingFrames) pending_.erase(pending_.begin());
}

std::shared_ptr<Media::AudioBuffer> WaveImageInput::soundAt(const Render::ObjectContext& context) {
  if (!fileItem_->getFilePath()->empty()) return readAudio(soundOfFrame(context));
  MediaAccess::SoundWait wait;
  {
    std::lock_guard lock(pendingMutex_);
    const auto found = pending_.find(context.frame);
    if (found == pending_.end()) return nullptr;
    wait = std::move(found->second);
    // What is older than this frame was never drawn (a frame dropped): let it go.
    pending_.erase(pending_.begin(), std::next(found));
  }
  return wait ? wait() : nullptr;
}

std::unique_ptr<Media::ResourceBuffer> WaveImageInput::inputVideo(Render::ObjectContext& context) {
  if (!context.worker) return nullptr;
  const std::shared_ptr<Media::AudioBuffer> sound = soundAt(context);
  const ItemContext items = Render::itemsAt(context);

  Media::WaveLook look;
  look.width = static_cast<std::uint32_t>(std::lround(item<EffectItemNumber>(L"横幅").getValueAt(items)));
  look.height = static_cast<std::uint32_t>(std::lround(item<EffectItemNumber>(L"高さ").getValueAt(items)));
  const EffectItemColor& colour = item<EffectItemColor>(L"波形の色");
  look.colour = {colour.r() / 255.0f, colour.g() / 255.0f, colour.b() / 255.0f, 1.0f};
  look.columns = item<EffectItemInteger>(L"横解像度").value();
  look.rows = item<EffectItemInteger>(L"縦解像度").value();
  look.fillX = static_cast<float>((100 - item<EffectItemInteger>(L"横スペース").value()) * 0.01);
  look.fillY = static_cast<float>((100 - item<EffectItemInteger>(L"縦スペース").value()) * 0.01);
  const double volume = item<EffectItemNumber>(L"音量").getValueAt(items) * 0.01;

  std::vector<float> values;
  if (sound && item<EffectItemCheck>(L"スペクトラム表示").value()) {
    std::uint32_t bands = look.columns > 0 ? static_cast<std::uint32_t>(look.columns) : look.width;
    if (bands > look.width) bands = look.width;
    values = sound->spectrum(std::min<std::uint32_t>(bands, kMostValues));
    look.columns = static_cast<std::int32_t>(values.size());
    look.volume = static_cast<float>(volume * kSpectrumScale);
    look.style = item<EffectItemCheck>(L"ミラー表示").value() ? Media::WaveStyle::MirrorSpectrum
                                                              : Media::WaveStyle::Spectrum;
  } else if (sound) {
    values = Media::waveformValues(*sound, kMostValues);
    look.volume = static_cast<float>(volume);
  }
  Media::GraphicsDevice& device = context.worker->device();
  std::lock_guard lock(common_->mutex);
  if (!common_->image || &common_->image->device() != &device) common_->image = std::make_unique<Media::WaveImage>(device);
  return common_->image->draw(values, look);
}

bool WaveImageInput::itemEvent(ItemEvent& event) {
  if (event.type == ItemEvent::OpenFileMenu) return false;
  return movieItemEvent(event);
}

bool WaveImageInput::acceptsFile(const std::wstring& path) const {
  return canReadSource(path, MediaAccess::Kind::Audio);
}

}  // namespace Effect
