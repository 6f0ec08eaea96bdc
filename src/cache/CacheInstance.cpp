#include "cache/CacheInstance.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>

#include "cache/AudioRangeRead.h"
#include "cache/AudioReadPosition.h"
#include "cache/CacheMediaAccess.h"
#include "edit/EditService.h"
#include "edit/Scene.h"
#include "event/EventService.h"
#include "media/GraphicsDevice.h"
#include "media/GraphicsService.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBlockBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/audio/WaveformBuffer.h"
#include "media/image/ConvertParameters.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ResourceConvert.h"
#include "plugin/InputFile.h"
#include "plugin/InputService.h"
#include "system/ConfigParameter.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"

namespace Cache {

namespace {

CacheInstance::Services startServices() {
  CacheInstance::Services services;
  services.ini = System::MainIniFile::get();
  services.input = System::Singleton<Plugin::InputService>::get();
  services.edit = System::Singleton<Edit::EditService>::get();
  services.events = System::Singleton<Event::EventService>::get();
  services.graphics = System::Singleton<Media::GraphicsService>::get();
  return services;
}

std::wstring trackName(const std::wstring& name, std::int32_t track) {
  // A negative track wraps to a number above 50 and is refused like one.
  return Plugin::InputService::MakeMultiTrackFileName(name, static_cast<std::uint32_t>(track));
}

std::int32_t sceneFrame(const Edit::Scene& scene, double seconds) {
  if (scene.videoScale == 0) return 0;
  return static_cast<std::int32_t>(
      std::llround(static_cast<double>(scene.videoRate) * seconds / static_cast<double>(scene.videoScale)));
}

std::uint64_t imageBytes(const Media::ImageBuffer& image) { return image.size(); }
// The GPU copy counts 8 bytes a pixel, the size of the frame's own format.
std::uint64_t vramBytes(const Media::ResourceBuffer& resource) {
  return std::uint64_t{resource.width()} * resource.height() * 8;
}
std::uint64_t blockBytes(const Media::AudioBlockBuffer& block) {
  return std::uint64_t{block.channels()} * block.sampleCount() * sizeof(float);
}

// Made through device.run, which runs at once on the GPU thread: a buffer made elsewhere
// would keep its pixels and upload them at some later first use, in the middle of a draw.
std::unique_ptr<Media::ResourceBuffer> upload(Media::ResourceConvert& convert, const Media::ImageBuffer& image) {
  std::unique_ptr<Media::ResourceBuffer> resource;
  convert.device().run(
      [&] { resource = std::make_unique<Media::ResourceBuffer>(convert, image, Media::ConvertParameters{}); });
  return resource;
}

// The one end of a promise made for a scene: the renderer's deliver, called once; or,
// where it is never called (its task dropped, the render thrown), the destruction of its
// last copy. Either way whoever waits for the promise is let go.
template <class Value>
std::function<void(std::shared_ptr<Value>)> keepPromise(std::function<void(std::shared_ptr<Value>)> deliver,
                                                        std::function<void()> abandon) {
  struct Promise {
    Promise(std::function<void(std::shared_ptr<Value>)> deliver, std::function<void()> abandon)
        : deliver(std::move(deliver)), abandon(std::move(abandon)) {}
    ~Promise() {
      if (!ended.exchange(true)) abandon();
    }
    std::function<void(std::shared_ptr<Value>)> deliver;
    std::function<void()> abandon;
    std::atomic<bool> ended{false};
  };
  auto promise = std::make_shared<Promise>(std::move(deliver), std::move(abandon));
  return [promise](std::shared_ptr<Value> value) {
    if (promise->ended.exchange(true)) return;
    if (value) {
      promise->deliver(std::move(value));
    } else {
      promise->abandon();
    }
  };
}

}  // namespace

CacheInstance::CacheInstance() : CacheInstance(startServices()) {}

CacheInstance::CacheInstance(const Services& services)
    : input_(services.input),
      edit_(services.edit),
      graphics_(services.graphics),
      convert_(services.convert),
      events_(services.events) {
  config_.setSection("Cache");
  config_.add<System::Config::Int>("AudioCacheSize", &audioCacheSize_, 64);
  config_.add<System::Config::Int>("ImageCacheSize", &imageCacheSize_, 768);
  config_.add<System::Config::Int>("VramCacheSize", &vramCacheSize_, 384);
  config_.add<System::Config::Int>("WaveformCacheSize", &waveformCacheSize_, 64);
  config_.load(services.ini);
  setCacheSizes(audioCacheSize_, imageCacheSize_, vramCacheSize_);
  waveform_.setLimit(waveformCacheSize_);
  if (services.events) {
    subscriptions_.add(services.events->sceneChanged, [this](std::int32_t) { dropSceneMedia(); });
  }
  mediaAccess_ = std::make_shared<CacheMediaAccess>(*this, input_);
  Effect::MediaAccess::install(mediaAccess_);
}

CacheInstance::~CacheInstance() {
  Effect::MediaAccess::uninstall(mediaAccess_.get());
  stop();
}

void CacheInstance::setCacheSizes(std::int32_t audioMegabytes, std::int32_t imageMegabytes,
                                  std::int32_t vramMegabytes) {
  audioCacheSize_ = audioMegabytes;
  imageCacheSize_ = imageMegabytes;
  vramCacheSize_ = vramMegabytes;
  audio_.setLimit(audioMegabytes);
  image_.setLimit(imageMegabytes);
  vram_.setLimit(vramMegabytes);
}

void CacheInstance::stop() {
  // Callers first: the VRAM cache takes its images from the image cache, the waveforms
  // their sound from the audio cache.
  stopped_ = true;
  waveform_.stop();
  vram_.stop();
  image_.stop();
  audio_.stop();
}

void CacheInstance::beginFrame() {
  decltype(heldImages_) released;
  {
    std::lock_guard lock(sceneMutex_);
    released.swap(heldImages_);
  }
  lastFrameVramBytes_ = runningVramBytes_.exchange(0);
}

void CacheInstance::setSceneImageRenderer(SceneImageRenderer renderer) {
  std::lock_guard lock(sceneMutex_);
  sceneImageRenderer_ = std::move(renderer);
}

void CacheInstance::setSceneAudioRenderer(SceneAudioRenderer renderer) {
  std::lock_guard lock(sceneMutex_);
  sceneAudioRenderer_ = std::move(renderer);
}

void CacheInstance::setSceneSoundStarter(SceneSoundStarter starter) {
  std::lock_guard lock(sceneMutex_);
  sceneSoundStarter_ = std::move(starter);
}

std::function<std::shared_ptr<Media::AudioBuffer>()> CacheInstance::startSceneSound(std::int32_t sceneId,
                                                                                   std::int32_t frame) {
  SceneSoundStarter starter;
  {
    std::lock_guard lock(sceneMutex_);
    starter = sceneSoundStarter_;
  }
  const std::shared_ptr<Edit::Scene> found = scene(sceneId);
  if (!starter || !found) return [] { return std::shared_ptr<Media::AudioBuffer>(); };
  return starter(found, frame);
}

Edit::EditService* CacheInstance::editService() const {
  return edit_ ? edit_ : System::Singleton<Edit::EditService>::get();
}

std::shared_ptr<Edit::Scene> CacheInstance::scene(std::int32_t id) const {
  Edit::EditService* edit = editService();
  return edit ? edit->project().findScene(id) : nullptr;
}

std::shared_ptr<Edit::Scene> CacheInstance::findScene(const std::wstring& name) const {
  if (name.size() < 2) return nullptr;
  std::int64_t id = 0;
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (name[i] < L'0' || name[i] > L'9') return nullptr;
    id = id * 10 + (name[i] - L'0');
    if (id > std::numeric_limits<std::int32_t>::max()) return nullptr;
  }
  return scene(static_cast<std::int32_t>(id));
}

std::shared_ptr<Plugin::InputFile> CacheInstance::openFile(const std::wstring& name, bool video) const {
  if (!input_) return nullptr;
  return input_->openCachedFile(name, video ? Plugin::MediaKind::Video : Plugin::MediaKind::Audio);
}

Media::ResourceConvert* CacheInstance::resourceConvert() const {
  if (convert_) return convert_;
  return graphics_ ? graphics_->resourceConvert() : nullptr;
}

CacheInstance::ImageCache::Loader CacheInstance::frameLoader(std::shared_ptr<Plugin::InputFile> file,
                                                             ImageCacheKey key) {
  return [this, file = std::move(file), key = std::move(key)] {
    std::shared_ptr<Media::ImageBuffer> image = file->readVideo(key.frame);
    if (!image) return;
    const std::uint64_t size = imageBytes(*image);
    image_.put(key, std::move(image), size);
  };
}

CacheInstance::ImageCache::Loader CacheInstance::imageFileLoader(ImageCacheKey key) {
  return [this, key = std::move(key)] {
    if (std::shared_ptr<Plugin::InputFile> file = openFile(key.name, true)) frameLoader(std::move(file), key)();
  };
}

CacheInstance::AudioCache::Loader CacheInstance::blockLoader(std::shared_ptr<Plugin::InputFile> file,
                                                             AudioCacheKey key) {
  return [this, file = std::move(file), key = std::move(key)] {
    std::shared_ptr<Media::AudioBlockBuffer> block = file->readAudio(key.block);
    if (!block) return;
    const std::uint64_t size = blockBytes(*block);
    audio_.put(key, std::move(block), size);
  };
}

std::shared_ptr<Media::ImageBuffer> CacheInstance::getVideoImage(const std::wstring& name, std::int32_t track,
                                                                 double seconds) {
  const std::wstring source = trackName(name, track);
  if (isSceneName(source)) {
    const std::shared_ptr<Edit::Scene> scene = findScene(source);
    if (!scene) return nullptr;
    const ImageCacheKey key{source, sceneFrame(*scene, seconds)};
    // A scene's image comes only from a render asked for ahead, so nothing here may make a
    // promise. The hold is looked at after the wait: a delivery enters it before it ends
    // the promise, so an image delivered meanwhile and dropped by the limit is found there.
    if (std::shared_ptr<Media::ImageBuffer> image = image_.await(key)) return image;
    return heldImage(key);
  }
  std::shared_ptr<Plugin::InputFile> file = openFile(source, true);
  if (!file) return nullptr;
  ImageCacheKey key{source, file->timeToFrame(seconds)};
  return image_.get(key, frameLoader(std::move(file), key));
}

void CacheInstance::preloadVideoImage(const std::wstring& name, std::int32_t track, double seconds) {
  const std::wstring source = trackName(name, track);
  if (isSceneName(source)) {
    const std::shared_ptr<Edit::Scene> scene = findScene(source);
    if (scene) preloadSceneImage(scene, ImageCacheKey{source, sceneFrame(*scene, seconds)});
    return;
  }
  std::shared_ptr<Plugin::InputFile> file = openFile(source, true);
  if (!file) return;
  ImageCacheKey key{source, file->timeToFrame(seconds)};
  image_.preload(key, frameLoader(file, key));
  readAhead(file, key);
}

void CacheInstance::readAhead(const std::shared_ptr<Plugin::InputFile>& file, const ImageCacheKey& asked) {
  std::int32_t step = 0;
  {
    std::lock_guard lock(readAheadMutex_);
    // Files come and go with the project; the memory of them is only a hint.
    if (lastPreloadedFrame_.size() > 1024) lastPreloadedFrame_.clear();
    const auto [last, first] = lastPreloadedFrame_.try_emplace(asked.name, asked.frame);
    if (first) return;
    step = asked.frame - last->second;
    last->second = asked.frame;
  }
  if (step < 1 || step > kReadAheadFrames) return;
  for (std::int32_t ahead = 1; ahead <= kReadAheadFrames; ++ahead) {
    const std::int32_t frame = asked.frame + step * ahead;
    if (frame >= file->frameCount || image_.pending() >= kQueueBound / 2) return;
    const ImageCacheKey key{asked.name, frame};
    image_.preload(key, frameLoader(file, key));
  }
}

std::shared_ptr<Media::ImageBuffer> CacheInstance::getImageFile(const std::wstring& path) {
  if (!input_ || path.empty()) return nullptr;
  ImageCacheKey key{path, 0};
  return image_.get(key, imageFileLoader(key));
}

void CacheInstance::preloadImageFile(const std::wstring& path) {
  if (!input_ || path.empty()) return;
  ImageCacheKey key{path, 0};
  image_.preload(key, imageFileLoader(key));
}

std::shared_ptr<Media::ResourceBuffer> CacheInstance::getResourceImage(const std::wstring& path) {
  Media::ResourceConvert* convert = resourceConvert();
  if (!convert) return nullptr;
  const ImageCacheKey key{path, 0};
  const bool listed = vram_.limit() > 0;
  if (listed) {
    if (std::shared_ptr<Media::ResourceBuffer> hit = vram_.find(key)) {
      runningVramBytes_ += vramBytes(*hit);
      return hit;
    }
  }
  // The image cache's loads never need the GPU thread, so the GPU thread may wait here.
  const std::shared_ptr<Media::ImageBuffer> image = getImageFile(path);
  if (!image) return nullptr;
  std::shared_ptr<Media::ResourceBuffer> resource = upload(*convert, *image);
  const std::uint64_t size = vramBytes(*resource);
  runningVramBytes_ += size;
  if (listed) vram_.put(key, resource, size);
  return resource;
}

std::unique_ptr<Media::ResourceBuffer> CacheInstance::getResourceImageCopy(const std::wstring& path) {
  Media::ResourceConvert* convert = resourceConvert();
  if (!convert) return nullptr;
  const std::uint64_t limit = vram_.limit();
  if (limit > 0 && lastFrameVramBytes_ < limit) {
    const std::shared_ptr<Media::ResourceBuffer> shared = getResourceImage(path);
    if (!shared) return nullptr;
    std::unique_ptr<Media::ResourceBuffer> copy;
    convert->device().run([&] { copy = shared->crop(shared->width(), shared->height(), 0, 0); });
    return copy;
  }
  // The last frame asked for more than the cache holds: listing this image would only push
  // out others that the frame still needs, so each copy is made from the CPU image.
  const std::shared_ptr<Media::ImageBuffer> image = getImageFile(path);
  if (!image) return nullptr;
  std::unique_ptr<Media::ResourceBuffer> resource = upload(*convert, *image);
  runningVramBytes_ += vramBytes(*resource);
  return resource;
}

std::unique_ptr<Media::ResourceBuffer> CacheInstance::toResource(const Media::ImageBuffer& image,
                                                                 const Media::ConvertParameters& parameters) {
  Media::ResourceConvert* convert = resourceConvert();
  if (!convert || image.width() == 0 || image.height() == 0) return nullptr;
  auto resource = std::make_unique<Media::ResourceBuffer>(*convert, image, parameters);
  runningVramBytes_ += vramBytes(*resource);
  return resource;
}

void CacheInstance::preloadResourceImage(const std::wstring& path) {
  if (!resourceConvert()) return;
  if (vram_.limit() > 0 && vram_.holds(ImageCacheKey{path, 0})) return;
  preloadImageFile(path);
}

std::shared_ptr<Media::AudioBlockBuffer> CacheInstance::getAudioBlock(const std::wstring& name, std::int32_t track,
                                                                      std::int32_t block) {
  const std::wstring source = trackName(name, track);
  AudioCacheKey key{source, block};
  if (isSceneName(source)) {
    if (!findScene(source)) return nullptr;
    // As for a scene's image: never a promise, and the hold after the wait.
    if (std::shared_ptr<Media::AudioBlockBuffer> delivered = audio_.await(key)) return delivered;
    return heldBlock(key);
  }
  std::shared_ptr<Plugin::InputFile> file = openFile(source, false);
  if (!file) return nullptr;
  return audio_.get(key, blockLoader(std::move(file), key));
}

std::shared_ptr<Media::WaveformBuffer> CacheInstance::getWaveform(const std::wstring& name, std::int32_t track) {
  const std::wstring source = trackName(name, track);
  const AudioCacheKey key{source, 0};
  if (std::shared_ptr<Media::WaveformBuffer> hit = waveform_.find(key)) return hit;
  if (isSceneName(source) || stopped_ || waveform_.pending() >= static_cast<std::size_t>(kWaveformQueueBound)) {
    return nullptr;
  }
  if (std::shared_ptr<Plugin::InputFile> file = openFile(source, false)) {
    waveform_.preload(key, waveformLoader(std::move(file), key));
  }
  return nullptr;
}

CacheInstance::WaveformCache::Loader CacheInstance::waveformLoader(std::shared_ptr<Plugin::InputFile> file,
                                                                   AudioCacheKey key) {
  return [this, file = std::move(file), key = std::move(key)] {
    if (file->sampleRate == 0 || file->sampleCount <= 0) return;
    const std::int64_t blocks = (file->sampleCount + file->sampleRate - 1) / file->sampleRate;
    auto waveform = std::make_shared<Media::WaveformBuffer>(static_cast<std::size_t>(blocks) *
                                                            Media::WaveformBuffer::kBytesPerBlock);
    for (std::int32_t block = 0; block < blocks; ++block) {
      if (stopped_) return;
      const AudioCacheKey blockKey{key.name, block};
      if (const std::shared_ptr<Media::AudioBlockBuffer> sound = audio_.get(blockKey, blockLoader(file, blockKey))) {
        waveform->writeBlock(block, *sound);
      }
    }
    const std::uint64_t size = waveform->size();
    waveform_.put(key, std::move(waveform), size);
    if (events_) events_->postCacheChanged();
  };
}

std::shared_ptr<Media::AudioBuffer> CacheInstance::readAudioRange(const std::wstring& name, std::int32_t track,
                                                                  std::int64_t position, std::int32_t positionRate,
                                                                  std::int32_t count, double startSeconds,
                                                                  double speed) {
  const std::wstring source = trackName(name, track);
  std::int64_t sourceRate = 0;
  if (isSceneName(source)) {
    const std::shared_ptr<Edit::Scene> scene = findScene(source);
    if (scene) sourceRate = scene->audioRate;
  } else if (const std::shared_ptr<Plugin::InputFile> file = openFile(source, false)) {
    sourceRate = file->sampleRate;
  }
  if (sourceRate <= 0 || count < 0) return nullptr;
  auto out = std::make_shared<Media::AudioBuffer>(static_cast<std::uint32_t>(count), 2);
  const AudioReadPosition at = audioReadPosition(sourceRate, position, positionRate, startSeconds, speed);
  readAudioSpan(*out, sourceRate, positionRate, at, [&](std::int64_t block) -> std::shared_ptr<const Media::AudioBuffer> {
    if (block < 0 || block > std::numeric_limits<std::int32_t>::max()) return nullptr;
    return getAudioBlock(name, track, static_cast<std::int32_t>(block));
  });
  return out;
}

void CacheInstance::preloadAudioRange(const std::wstring& name, std::int32_t track, std::int64_t position,
                                      std::int32_t positionRate, std::int32_t count, double startSeconds,
                                      double speed) {
  const std::wstring source = trackName(name, track);
  if (isSceneName(source)) {
    const std::shared_ptr<Edit::Scene> scene = findScene(source);
    if (!scene) return;
    const AudioBlockSpan span =
        audioBlocksTouched(scene->audioRate, position, positionRate, count, startSeconds, speed);
    for (std::int64_t block = span.first; block <= span.last; ++block) {
      preloadSceneBlock(scene, AudioCacheKey{source, static_cast<std::int32_t>(block)});
    }
    return;
  }
  const std::shared_ptr<Plugin::InputFile> file = openFile(source, false);
  if (!file || file->sampleRate == 0) return;
  AudioBlockSpan span = audioBlocksTouched(file->sampleRate, position, positionRate, count, startSeconds, speed);
  // The read finds nothing past the end; asking for it would only take a place in the queue.
  const std::int64_t blocks = (file->sampleCount + file->sampleRate - 1) / file->sampleRate;
  span.last = std::min(span.last, blocks - 1);
  for (std::int64_t block = span.first; block <= span.last; ++block) {
    AudioCacheKey key{source, static_cast<std::int32_t>(block)};
    audio_.preload(key, blockLoader(file, key));
  }
}

void CacheInstance::preloadSceneImage(const std::shared_ptr<Edit::Scene>& scene, const ImageCacheKey& key) {
  SceneImageRenderer render;
  {
    std::lock_guard lock(sceneMutex_);
    render = sceneImageRenderer_;
  }
  if (!render || !image_.promise(key)) return;
  // Held: delivered in this frame already, perhaps just now, and dropped by the limit.
  if (heldImage(key)) {
    image_.abandon(key);
    return;
  }
  render(scene, key.frame,
         keepPromise<Media::ImageBuffer>(
             [this, key](std::shared_ptr<Media::ImageBuffer> image) { deliverSceneImage(key, std::move(image)); },
             [this, key] { image_.abandon(key); }));
}

void CacheInstance::preloadSceneBlock(const std::shared_ptr<Edit::Scene>& scene, const AudioCacheKey& key) {
  SceneAudioRenderer render;
  {
    std::lock_guard lock(sceneMutex_);
    render = sceneAudioRenderer_;
  }
  if (!render || !audio_.promise(key)) return;
  if (heldBlock(key)) {
    audio_.abandon(key);
    return;
  }
  render(scene, key.block,
         keepPromise<Media::AudioBlockBuffer>(
             [this, key](std::shared_ptr<Media::AudioBlockBuffer> block) { deliverSceneBlock(key, std::move(block)); },
             [this, key] { audio_.abandon(key); }));
}

void CacheInstance::deliverSceneImage(const ImageCacheKey& key, std::shared_ptr<Media::ImageBuffer> image) {
  // Held before the put ends the promise: see getVideoImage.
  {
    std::lock_guard lock(sceneMutex_);
    heldImages_.insert_or_assign(key, image);
  }
  const std::uint64_t size = imageBytes(*image);
  image_.put(key, std::move(image), size);
}

void CacheInstance::deliverSceneBlock(const AudioCacheKey& key, std::shared_ptr<Media::AudioBlockBuffer> block) {
  {
    std::lock_guard lock(sceneMutex_);
    std::erase_if(heldBlocks_, [&](const auto& held) { return held.first == key; });
    heldBlocks_.emplace_back(key, block);
    if (heldBlocks_.size() > kHeldSceneBlocks) heldBlocks_.pop_front();
  }
  const std::uint64_t size = blockBytes(*block);
  audio_.put(key, std::move(block), size);
}

std::shared_ptr<Media::ImageBuffer> CacheInstance::heldImage(const ImageCacheKey& key) {
  std::lock_guard lock(sceneMutex_);
  const auto found = heldImages_.find(key);
  return found == heldImages_.end() ? nullptr : found->second;
}

std::shared_ptr<Media::AudioBlockBuffer> CacheInstance::heldBlock(const AudioCacheKey& key) {
  std::lock_guard lock(sceneMutex_);
  const auto found =
      std::find_if(heldBlocks_.begin(), heldBlocks_.end(), [&](const auto& held) { return held.first == key; });
  return found == heldBlocks_.end() ? nullptr : found->second;
}

void CacheInstance::dropSceneMedia() {
  const auto fromScene = [](const auto& key) { return isSceneName(key.name); };
  image_.eraseIf(fromScene);
  audio_.eraseIf(fromScene);
  decltype(heldImages_) images;
  decltype(heldBlocks_) blocks;
  std::lock_guard lock(sceneMutex_);
  images.swap(heldImages_);
  blocks.swap(heldBlocks_);
}

}  // namespace Cache
