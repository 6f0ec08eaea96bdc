// What the input effects need of the media side: what a file or scene holds, its
// decoded frames and pictures, and its sound read at a position and speed. The cache
// service answers in the program; tests answer with their own. Effects only ever see
// this, so the effect library stays below the readers and the cache. Installed once at
// start, read from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Media {
class AudioBuffer;
class ImageBuffer;
class ResourceBuffer;
class WaveformBuffer;
struct ConvertParameters;
}  // namespace Media

namespace Effect {

// What an open file holds, as its reader told it.
struct MediaSourceInfo {
  enum Flag : std::uint32_t { Video = 1, Audio = 2, MultiTrack = 4 };
  std::uint32_t flags = 0;
  std::int32_t pixelFormat = 0;  // the reader's format number; 107 YUY2, 13 YC48
  std::int64_t frameCount = 0;
  std::uint32_t rate = 0;
  std::uint32_t scale = 0;
  std::int64_t sampleCount = 0;
  std::uint32_t sampleRate = 0;
  std::uint32_t videoTrackCount = 0;
  std::uint32_t audioTrackCount = 0;
};

// What a scene used as a source holds.
struct MediaSceneInfo {
  std::int32_t videoRate = 30;
  std::int32_t videoScale = 1;
  std::int32_t lastFrame = -1;  // the last frame any object uses; -1 for an empty scene
  std::int32_t audioRate = 48000;
};

class MediaAccess {
 public:
  enum class Kind { Video = 1, Audio = 2, Image = 3 };  // Image: a still picture

  virtual ~MediaAccess() = default;

  // The one the program uses; null before start and in tests that install none.
  static std::shared_ptr<MediaAccess> get();
  static void install(std::shared_ptr<MediaAccess> access);
  // Takes `access` away if it is the one installed; a later one stays.
  static void uninstall(const MediaAccess* access);

  // Moves on whenever open files may have become stale; whoever remembers what a file
  // held looks again when it differs.
  virtual std::uint32_t fileGeneration() = 0;
  // Opens the file as `kind` (kept open by the input service), or nothing.
  virtual std::optional<MediaSourceInfo> probe(const std::wstring& path, Kind kind) = 0;
  virtual std::optional<MediaSceneInfo> scene(std::int32_t sceneId) = 0;
  // Whether a reader takes the file as that kind, without keeping it open.
  virtual bool canRead(const std::wstring& path, Kind kind) = 0;

  // `name` is a file path or "*" and a scene's id; `track` 0 is the name itself.
  virtual void preloadVideoImage(const std::wstring& name, std::int32_t track, double seconds) = 0;
  virtual std::shared_ptr<Media::ImageBuffer> getVideoImage(const std::wstring& name, std::int32_t track,
                                                            double seconds) = 0;
  virtual void preloadResourceImage(const std::wstring& path) = 0;
  // A GPU copy of a still picture that the caller owns; empty when it cannot be read.
  virtual std::unique_ptr<Media::ResourceBuffer> getResourceImageCopy(const std::wstring& path) = 0;

  // A CPU image as a GPU image in the frame's format, converted as `parameters` say; on
  // the GPU thread. Empty when there is no device.
  virtual std::unique_ptr<Media::ResourceBuffer> toResource(const Media::ImageBuffer& image,
                                                            const Media::ConvertParameters& parameters) = 0;

  // `count` samples of the source from sample `position` counted at `positionRate`, moved
  // by `startSeconds` of the source and read at `speed` (negative: backwards). Empty when
  // there is no such source.
  virtual std::shared_ptr<Media::AudioBuffer> readAudioRange(const std::wstring& name, std::int32_t track,
                                                             std::int64_t position, std::int32_t positionRate,
                                                             std::int32_t count, double startSeconds,
                                                             double speed) = 0;
  virtual void preloadAudioRange(const std::wstring& name, std::int32_t track, std::int64_t position,
                                 std::int32_t positionRate, std::int32_t count, double startSeconds,
                                 double speed) = 0;
  // Starts the mix of frame `frame` of scene `sceneId` and gives what waits for it; the
  // wait gives nothing when no audio worker renders, or the mix when it is complete.
  using SoundWait = std::function<std::shared_ptr<Media::AudioBuffer>()>;
  virtual SoundWait startSceneSound(std::int32_t sceneId, std::int32_t frame) = 0;
  // The overview the timeline draws under a sound object, or nothing while it is made.
  virtual std::shared_ptr<Media::WaveformBuffer> getWaveform(const std::wstring& name, std::int32_t track) = 0;
};

}  // namespace Effect
