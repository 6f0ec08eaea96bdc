// The input effects' way to the cache service, the input service and the project's
// scenes: the program's MediaAccess. The cache service installs it for its own life.
#pragma once

#include "effect/input/MediaAccess.h"

namespace Plugin {
class InputService;
}

namespace Cache {

class CacheInstance;

class CacheMediaAccess final : public Effect::MediaAccess {
 public:
  // The input service may be missing: files then hold nothing.
  CacheMediaAccess(CacheInstance& cache, Plugin::InputService* input) : cache_(cache), input_(input) {}

  std::uint32_t fileGeneration() override;
  std::optional<Effect::MediaSourceInfo> probe(const std::wstring& path, Kind kind) override;
  std::optional<Effect::MediaSceneInfo> scene(std::int32_t sceneId) override;
  bool canRead(const std::wstring& path, Kind kind) override;
  void preloadVideoImage(const std::wstring& name, std::int32_t track, double seconds) override;
  std::shared_ptr<Media::ImageBuffer> getVideoImage(const std::wstring& name, std::int32_t track,
                                                    double seconds) override;
  void preloadResourceImage(const std::wstring& path) override;
  std::unique_ptr<Media::ResourceBuffer> getResourceImageCopy(const std::wstring& path) override;
  std::unique_ptr<Media::ResourceBuffer> toResource(const Media::ImageBuffer& image,
                                                    const Media::ConvertParameters& parameters) override;
  std::shared_ptr<Media::AudioBuffer> readAudioRange(const std::wstring& name, std::int32_t track,
                                                     std::int64_t position, std::int32_t positionRate,
                                                     std::int32_t count, double startSeconds, double speed) override;
  void preloadAudioRange(const std::wstring& name, std::int32_t track, std::int64_t position,
                         std::int32_t positionRate, std::int32_t count, double startSeconds, double speed) override;
  std::shared_ptr<Media::WaveformBuffer> getWaveform(const std::wstring& name, std::int32_t track) override;
  SoundWait startSceneSound(std::int32_t sceneId, std::int32_t frame) override;

 private:
  CacheInstance& cache_;
  Plugin::InputService* input_;
};

}  // namespace Cache
