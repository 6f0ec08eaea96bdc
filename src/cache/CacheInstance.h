// The one service that holds decoded media: frames and still images on the CPU, still
// images on the GPU, and one-second blocks of sound, each in a cache with a limit from
// section "Cache" of the main ini. Effects ask ahead while the render thread prepares
// them and ask again when they draw on the GPU thread; scenes used as media come from the
// renderers that the render and audio workers install. Built, stopped and released on the
// main thread (System::Singleton); the other operations may be called from any thread,
// beginFrame from the render thread. Whoever asks for a scene holds a scene reader.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>

#include "cache/CacheKeys.h"
#include "cache/PreLoadCache.h"
#include "event/Subscriptions.h"
#include "system/ConfigGroup.h"

namespace Edit {
class EditService;
class Scene;
}  // namespace Edit
namespace Effect {
class MediaAccess;
}
namespace Event {
class EventService;
}
namespace Media {
class AudioBlockBuffer;
class AudioBuffer;
class GraphicsService;
struct ConvertParameters;
class ImageBuffer;
class ResourceBuffer;
class ResourceConvert;
class WaveformBuffer;
}  // namespace Media
namespace Plugin {
class InputFile;
class InputService;
}  // namespace Plugin
namespace System {
class IniFile;
}

namespace Cache {

class CacheInstance {
 public:
  static constexpr const char* kClassName = "Cache::CacheInstance";
  // Loads that may wait for each cache's worker.
  static constexpr std::int32_t kQueueBound = 16;
  // How many frames a file that is played forward is read ahead of its request.
  static constexpr std::int32_t kReadAheadFrames = 3;
  // Blocks of scene sound kept past a limit too small to list them (see below).
  static constexpr std::size_t kHeldSceneBlocks = 8;

  using AudioCache = System::PreLoadCache<AudioCacheKey, Media::AudioBlockBuffer>;
  using ImageCache = System::PreLoadCache<ImageCacheKey, Media::ImageBuffer>;
  using VramCache = System::PreLoadCache<ImageCacheKey, Media::ResourceBuffer>;
  // Keyed by the source's track name, block always 0.
  using WaveformCache = System::PreLoadCache<AudioCacheKey, Media::WaveformBuffer>;
  // Waveforms made at once: each reads a whole file, and the timeline only ever waits for
  // the next redraw.
  static constexpr std::int32_t kWaveformQueueBound = 2;

  // Renders frame `frame` of `scene` on the calling thread (the render thread) and calls
  // `deliver` once, later and from another thread, with the image or with nothing. A
  // `deliver` that is destroyed uncalled (its task dropped, the render failed) counts as
  // nothing delivered. No copy of it may outlive the service.
  using SceneImageRenderer =
      std::function<void(const std::shared_ptr<Edit::Scene>& scene, std::int32_t frame,
                         std::function<void(std::shared_ptr<Media::ImageBuffer>)> deliver)>;
  // The same for block `block` (one second at the scene's audio rate) of a scene's sound.
  using SceneAudioRenderer =
      std::function<void(const std::shared_ptr<Edit::Scene>& scene, std::int32_t block,
                         std::function<void(std::shared_ptr<Media::AudioBlockBuffer>)> deliver)>;

  // Starts the mix of one frame of a scene on the audio worker and gives what waits for
  // it (an effect that draws the scene's own sound asks ahead on the walker and waits on
  // the object thread).
  using SceneSoundStarter = std::function<std::function<std::shared_ptr<Media::AudioBuffer>()>(
      const std::shared_ptr<Edit::Scene>& scene, std::int32_t frame)>;

  // What the service works with; any of them may be missing, and what needs it then gives
  // nothing.
  struct Services {
    System::IniFile* ini = nullptr;  // section "Cache"; null: the defaults, stored nowhere
    Plugin::InputService* input = nullptr;
    Edit::EditService* edit = nullptr;      // finds the scenes used as media; null: the service's
    Event::EventService* events = nullptr;  // `sceneChanged` drops what scenes made
    // Makes the GPU images. The graphics service makes its conversion at a later step of
    // the start, so it is looked up at each use; `convert`, where given, comes first.
    Media::GraphicsService* graphics = nullptr;
    Media::ResourceConvert* convert = nullptr;
  };

  // The service of the start: the main ini, and the input, edit, event and graphics
  // services that stand by then.
  CacheInstance();
  explicit CacheInstance(const Services& services);
  // Stops the caches if stop() has not, and stores the settings.
  ~CacheInstance();
  CacheInstance(const CacheInstance&) = delete;
  CacheInstance& operator=(const CacheInstance&) = delete;

  // The caches, for their statistics and limits.
  AudioCache& audioCache() noexcept { return audio_; }
  ImageCache& imageCache() noexcept { return image_; }
  VramCache& vramCache() noexcept { return vram_; }
  WaveformCache& waveformCache() noexcept { return waveform_; }

  // The settings in MiB, as stored at exit. setCacheSizes keeps new values and applies
  // them as the caches' limits at once. Main thread.
  std::int32_t audioCacheSize() const noexcept { return audioCacheSize_; }
  std::int32_t imageCacheSize() const noexcept { return imageCacheSize_; }
  std::int32_t vramCacheSize() const noexcept { return vramCacheSize_; }
  void setCacheSizes(std::int32_t audioMegabytes, std::int32_t imageMegabytes, std::int32_t vramMegabytes);

  // At exit, before the application-end listeners: every blocked caller is let go with
  // nothing, and nothing is loaded from then on.
  void stop();

  // At the start of every top-level frame, on the render thread: the scene images held for
  // the frame just ended are let go, and the GPU image counters roll over.
  void beginFrame();
  void setSceneImageRenderer(SceneImageRenderer renderer);
  void setSceneAudioRenderer(SceneAudioRenderer renderer);
  void setSceneSoundStarter(SceneSoundStarter starter);
  // The wait for the mix of frame `frame` of scene `sceneId`; one that gives nothing when
  // no starter is installed or the scene does not exist.
  std::function<std::shared_ptr<Media::AudioBuffer>()> startSceneSound(std::int32_t sceneId, std::int32_t frame);

  // The frame shown at `seconds` of track `track` of a file or scene; waits for its load.
  // Empty when there is nothing to show. A track above 50 throws "invalid track index".
  std::shared_ptr<Media::ImageBuffer> getVideoImage(const std::wstring& name, std::int32_t track, double seconds);
  // The same ahead of need. A scene renders here, on the calling thread, which must
  // therefore ask before the image is drawn. A file asked for a frame a few frames after
  // the one asked for last is being played: the next kReadAheadFrames frames at that
  // pace are read as well, while the loader has room, so that they are decoded before
  // their request comes and asking ahead never waits for a full queue.
  void preloadVideoImage(const std::wstring& name, std::int32_t track, double seconds);
  // A still image, as frame 0.
  std::shared_ptr<Media::ImageBuffer> getImageFile(const std::wstring& path);
  void preloadImageFile(const std::wstring& path);

  // The GPU image of a still image, shared. Made on the GPU thread alone, and waiting only
  // for the image cache, so the GPU thread itself may ask.
  std::shared_ptr<Media::ResourceBuffer> getResourceImage(const std::wstring& path);
  // A GPU copy of it that the caller owns and may change.
  std::unique_ptr<Media::ResourceBuffer> getResourceImageCopy(const std::wstring& path);
  // A CPU image of a reader or a drawing as a GPU image in the frame's format; on the GPU
  // thread. Empty without a graphics device.
  std::unique_ptr<Media::ResourceBuffer> toResource(const Media::ImageBuffer& image,
                                                    const Media::ConvertParameters& parameters);
  // Loads the still image ahead; it goes to the GPU at its first use.
  void preloadResourceImage(const std::wstring& path);

  // Block `block` (one second at the source's rate) of a file's or scene's sound.
  std::shared_ptr<Media::AudioBlockBuffer> getAudioBlock(const std::wstring& name, std::int32_t track,
                                                         std::int32_t block);
  // `count` samples of a file's or scene's sound from sample `position`, counted at
  // `positionRate`, with that start and speed, as a new stereo buffer; empty when there
  // is no such source. Waits for the blocks it needs.
  std::shared_ptr<Media::AudioBuffer> readAudioRange(const std::wstring& name, std::int32_t track,
                                                     std::int64_t position, std::int32_t positionRate,
                                                     std::int32_t count, double startSeconds, double speed);
  // Asks ahead for the blocks that reading `count` samples from sample `position`, counted
  // at `positionRate`, with that start and speed will fetch (see AudioReadPosition.h).
  void preloadAudioRange(const std::wstring& name, std::int32_t track, std::int64_t position,
                         std::int32_t positionRate, std::int32_t count, double startSeconds, double speed);

  // The overview of a file's sound that the timeline draws, or nothing while it is made:
  // never waits. When one is finished the event service is told that the cache changed.
  std::shared_ptr<Media::WaveformBuffer> getWaveform(const std::wstring& name, std::int32_t track);

  // The project's scene of that id, or nothing.
  std::shared_ptr<Edit::Scene> scene(std::int32_t id) const;

  // Bytes of GPU images asked for in the frame under way and in the frame before.
  struct VramCounters {
    std::uint64_t running = 0;
    std::uint64_t lastFrame = 0;
  };
  VramCounters vramCounters() const noexcept { return {runningVramBytes_.load(), lastFrameVramBytes_.load()}; }

 private:
  // The edit service starts after this one, so it is looked up at each use unless the
  // services named one.
  Edit::EditService* editService() const;
  // The scene named "*<id>", or empty.
  std::shared_ptr<Edit::Scene> findScene(const std::wstring& name) const;
  std::shared_ptr<Plugin::InputFile> openFile(const std::wstring& name, bool video) const;
  Media::ResourceConvert* resourceConvert() const;

  ImageCache::Loader frameLoader(std::shared_ptr<Plugin::InputFile> file, ImageCacheKey key);
  void readAhead(const std::shared_ptr<Plugin::InputFile>& file, const ImageCacheKey& asked);
  // Opens the picture on the worker too: a still image is not kept open, so opening it is
  // part of the load, and a hit never touches the file.
  ImageCache::Loader imageFileLoader(ImageCacheKey key);
  AudioCache::Loader blockLoader(std::shared_ptr<Plugin::InputFile> file, AudioCacheKey key);
  WaveformCache::Loader waveformLoader(std::shared_ptr<Plugin::InputFile> file, AudioCacheKey key);
  void preloadSceneImage(const std::shared_ptr<Edit::Scene>& scene, const ImageCacheKey& key);
  void preloadSceneBlock(const std::shared_ptr<Edit::Scene>& scene, const AudioCacheKey& key);
  void deliverSceneImage(const ImageCacheKey& key, std::shared_ptr<Media::ImageBuffer> image);
  void deliverSceneBlock(const AudioCacheKey& key, std::shared_ptr<Media::AudioBlockBuffer> block);
  std::shared_ptr<Media::ImageBuffer> heldImage(const ImageCacheKey& key);
  std::shared_ptr<Media::AudioBlockBuffer> heldBlock(const AudioCacheKey& key);
  // On `sceneChanged`: images and sound made from scenes never outlive a change of scene.
  void dropSceneMedia();

  std::int32_t audioCacheSize_ = 64;
  std::int32_t imageCacheSize_ = 768;
  std::int32_t vramCacheSize_ = 384;
  std::int32_t waveformCacheSize_ = 64;
  System::Config::Group config_;
  Plugin::InputService* input_ = nullptr;
  Edit::EditService* edit_ = nullptr;
  Media::GraphicsService* graphics_ = nullptr;
  Media::ResourceConvert* convert_ = nullptr;
  Event::EventService* events_ = nullptr;

  AudioCache audio_{kQueueBound};
  ImageCache image_{kQueueBound};
  VramCache vram_{kQueueBound};
  WaveformCache waveform_{kWaveformQueueBound};
  std::atomic<bool> stopped_{false};
  // The frame each file was last asked ahead for, to tell playing from jumping.
  std::mutex readAheadMutex_;
  std::unordered_map<std::wstring, std::int32_t> lastPreloadedFrame_;
  std::atomic<std::uint64_t> runningVramBytes_{0};
  std::atomic<std::uint64_t> lastFrameVramBytes_{0};

  // What scenes delivered, held past the caches' limits: a limit of 0 would otherwise drop
  // an image between its render and its draw, and the next ask would render it again.
  // Images are held until the next frame begins; blocks of sound, which have no frame, the
  // last kHeldSceneBlocks of them. Also guards the renderers.
  std::mutex sceneMutex_;
  SceneImageRenderer sceneImageRenderer_;
  SceneAudioRenderer sceneAudioRenderer_;
  SceneSoundStarter sceneSoundStarter_;
  std::unordered_map<ImageCacheKey, std::shared_ptr<Media::ImageBuffer>> heldImages_;
  std::deque<std::pair<AudioCacheKey, std::shared_ptr<Media::AudioBlockBuffer>>> heldBlocks_;

  // How the input effects reach this service; installed for the life of the service.
  std::shared_ptr<Effect::MediaAccess> mediaAccess_;

  Event::Subscriptions subscriptions_;  // last: it goes first, before what it calls into
};

}  // namespace Cache
