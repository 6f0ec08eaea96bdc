#include "render/RenderService.h"

#include "cache/CacheInstance.h"
#include "edit/EditService.h"
#include "media/GraphicsService.h"
#include "media/audio/AudioBlockBuffer.h"
#include "render/RenderAudioWorker.h"
#include "render/RenderVideoWorker.h"
#include "setting/SettingService.h"
#include "system/Exception.h"

namespace Render {

namespace {

template <class T>
T& requireService(const char* name) {
  T* service = System::Singleton<T>::get();
  if (!service) throw System::NoteException("Render::RenderService::RenderService", "service not started.", name);
  return *service;
}

}  // namespace

RenderService::RenderService() : cache_(System::Singleton<Cache::CacheInstance>::get()) {
  video_ = std::make_unique<RenderVideoWorker>(
      requireService<Media::GraphicsService>("Media::GraphicsService").device(),
      requireService<Edit::EditService>("Edit::EditService"),
      VideoWorkerSettings::read(requireService<Setting::SettingService>("Setting::SettingService")));
  audio_ = std::make_unique<RenderAudioWorker>(requireService<Edit::EditService>("Edit::EditService"));
  video_->setFramePasses(System::Singleton<Media::GraphicsService>::get()->framePasses());
  if (cache_) {
    RenderVideoWorker* video = video_.get();
    video_->setFrameBeginHook([cache = cache_] { cache->beginFrame(); });
    cache_->setSceneImageRenderer([video](const std::shared_ptr<Edit::Scene>& scene, std::int32_t frame,
                                          std::function<void(std::shared_ptr<Media::ImageBuffer>)> deliver) {
      video->renderSceneImage(scene, frame, std::move(deliver));
    });
    RenderAudioWorker* audio = audio_.get();
    cache_->setSceneAudioRenderer([audio](const std::shared_ptr<Edit::Scene>& scene, std::int32_t block,
                                          std::function<void(std::shared_ptr<Media::AudioBlockBuffer>)> deliver) {
      audio->createSceneAudioBlock(scene, block, std::move(deliver));
    });
    cache_->setSceneSoundStarter([audio](const std::shared_ptr<Edit::Scene>& scene, std::int32_t frame) {
      std::shared_ptr<RenderAudioWorker::RenderingBuffer> rendering = audio->startRendering(scene, frame);
      return [rendering]() -> std::shared_ptr<Media::AudioBuffer> {
        rendering->done.wait();
        if (rendering->buffer.empty()) return nullptr;
        // The buffer stays the rendering's; the picture reads it once it is complete.
        return std::shared_ptr<Media::AudioBuffer>(rendering, &rendering->buffer);
      };
    });
  }
}

RenderService::~RenderService() {
  stop();
  // The cache outlives the render front.
  if (cache_) {
    cache_->setSceneImageRenderer(nullptr);
    cache_->setSceneAudioRenderer(nullptr);
    cache_->setSceneSoundStarter(nullptr);
  }
}

void RenderService::stop() {
  audio_->stop();
  video_->stop();
}

}  // namespace Render
