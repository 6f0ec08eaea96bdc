// The render front: the video worker, made at start once the edit service stands, and
// joined by the audio worker and the player when they are built. It connects the worker
// with the media caches: a scene shown as video is rendered by this worker, and each
// frame rolls the caches' per-frame counters. A global service (System::Singleton),
// acquired and released on the main thread.
#pragma once

#include <memory>

#include "system/Singleton.h"

namespace Cache {
class CacheInstance;
}

namespace Render {

class RenderAudioWorker;
class RenderVideoWorker;

class RenderService {
 public:
  static constexpr const char* kClassName = "Render::RenderService";

  // Needs the settings, the graphics service and the edit service; the cache service
  // where it runs.
  RenderService();
  // Stops the workers if stop() has not.
  ~RenderService();
  RenderService(const RenderService&) = delete;
  RenderService& operator=(const RenderService&) = delete;

  RenderVideoWorker& video() noexcept { return *video_; }
  RenderAudioWorker& audio() noexcept { return *audio_; }

  // The worker threads, at exit, before the services they use go.
  void stop();

 private:
  Cache::CacheInstance* cache_ = nullptr;
  std::unique_ptr<RenderVideoWorker> video_;
  std::unique_ptr<RenderAudioWorker> audio_;
};

}  // namespace Render
