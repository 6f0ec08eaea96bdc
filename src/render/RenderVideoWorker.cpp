#include "render/RenderVideoWorker.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "edit/SceneReader.h"
#include "effect/EffectBase.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"
#include "media/image/ImageBuffer.h"
#include "render/RenderSection.h"
#include "render/ResourceCache.h"
#include "setting/SettingService.h"
#include "system/Log.h"
#include "system/MainIniFile.h"
#include "system/Text.h"

namespace Render {

namespace {

constexpr std::int32_t kAllLayers = 0x7fffffff;
constexpr std::int32_t kObjectTasksAhead = 8;
constexpr const char* kObjectWorkerName = "RenderObjectWorkerVideo";

}  // namespace

VideoWorkerSettings VideoWorkerSettings::read(Setting::SettingService& settings) {
  VideoWorkerSettings read;
  read.temporaryImageCacheSize = static_cast<std::uint64_t>(std::max(0, settings.config()["TemporaryImageCacheSize"].toInt()));
  std::array<float, 4> mask{};
  settings.color()["ClippingObjectMask"].toRGBA(mask);
  read.clippingMaskColour = {mask[0] * mask[3], mask[1] * mask[3], mask[2] * mask[3], mask[3]};
  read.mainIni = System::MainIniFile::get();
  return read;
}

RenderVideoWorker::RenderVideoWorker(Media::GraphicsDevice& device, Edit::EditService& edit,
                                     const VideoWorkerSettings& settings)
    : device_(device),
      edit_(edit),
      temporaryImageCacheSize_(settings.temporaryImageCacheSize),
      clippingMaskColour_(settings.clippingMaskColour) {
  config_.setSection("Render.video");
  config_.add<System::Config::Int>("GridXY", &gridXY_, 0);
  config_.add<System::Config::Int>("CameraGrid", &cameraGrid_, 1);
  config_.add<System::Config::Int>("VisibleClippingObject", &visibleClippingObject_, 1);
  config_.add<System::Config::Int>("CameraFreeView", &cameraFreeView_, 0);
  config_.load(settings.mainIni);
  objectSlots_.setMax(kObjectTasksAhead);
}

RenderVideoWorker::~RenderVideoWorker() { stop(); }

void RenderVideoWorker::stop() {
  stopping_ = true;
  // A walker waiting for room goes on, and everything it posts from now on is dropped.
  objectSlots_.open();
  renderThread_.stop();
}

void RenderVideoWorker::requestRenderingFrame(std::int32_t mode, std::int32_t frame, FrameCallback callback) {
  if (mode == Preview) renderThread_.cancel(Preview);
  renderThread_.post(mode, [this, mode, frame, callback = std::move(callback)] { renderFrame(mode, frame, callback); });
}

void RenderVideoWorker::renderFrame(std::int32_t mode, std::int32_t frame, const FrameCallback& callback) {
  if (mode == Playback && frame < earliestFrame()) return;
  const auto start = std::chrono::steady_clock::now();
  objectTaskFailed_ = false;
  guides_.clear();
  ResourceCache cache(temporaryImageCacheSize_);
  std::shared_ptr<RenderingBuffer> buffer;
  bool complete = false;
  {
    const Edit::SceneReader reader(edit_);
    const Edit::Scene& scene = *reader.scene();
    buffer = takeFrameBuffer(scene);
    if (frameBeginHook_) frameBeginHook_();
    clearActiveScenes();
    try {
      renderSection(SectionArguments{scene, frame, *buffer, cache, mode == Preview ? &guides_ : nullptr, 0,
                                     kAllLayers, false});
    } catch (...) {
      // No task of this frame may outlive the reader, the cache or the buffer.
      awaitObjectTasks();
      throw;
    }
    complete = awaitObjectTasks();
  }
  if (!complete || objectTaskFailed_) return;
  Anchor::AnchorList noGuides;
  callback(frame, *buffer, mode == Preview ? guides_ : noGuides);
  const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
  System::Log::verbose("Render::RenderVideoWorker::requestRenderingFrame", "rendered video frame [%d] %1.3lf ms", frame,
                       elapsed.count());
}

std::shared_ptr<RenderVideoWorker::RenderingBuffer> RenderVideoWorker::takeFrameBuffer(const Edit::Scene& scene) {
  // Reusing the last frame's texture saves allocating and releasing a whole frame each
  // time; it is reused only once the callback let go of it, and starts without the
  // lights and 3D buffers of that frame.
  if (spareBuffer_ && spareBuffer_.use_count() == 1) {
    spareBuffer_->resetForNewFrame();
  } else {
    spareBuffer_ = std::make_shared<RenderingBuffer>(device_, static_cast<std::uint32_t>(scene.width),
                                                     static_cast<std::uint32_t>(scene.height));
  }
  return spareBuffer_;
}

void RenderVideoWorker::renderSection(const SectionArguments& arguments) {
  Media::RenderBuffer& target = arguments.target;
  const auto width = static_cast<std::uint32_t>(arguments.scene.width);
  const auto height = static_cast<std::uint32_t>(arguments.scene.height);
  postObjectTask([&target, width, height] {
    target.createTexture2D(width, height);
    target.clear(Media::Color{0.0f, 0.0f, 0.0f, 0.0f});
  });
  const ActiveScene active(*this, sceneKey(arguments.scene.id, arguments.subRender));
  if (!active.entered()) return;
  if (layerWalk_) {
    layerWalk_(*this, arguments);
  } else {
    RenderSection walk(*this, arguments);
  }
  postObjectTask([this] { lastImage_.reset(); });
}

void RenderVideoWorker::renderSceneImage(const std::shared_ptr<Edit::Scene>& scene, std::int32_t frame,
                                         ImageCallback callback) {
  auto buffer = std::make_shared<Media::RenderBuffer>(device_, static_cast<std::uint32_t>(scene->width),
                                                      static_cast<std::uint32_t>(scene->height));
  auto cache = std::make_shared<ResourceCache>(temporaryImageCacheSize_);
  renderSection(SectionArguments{*scene, frame, *buffer, *cache, nullptr, 0, kAllLayers, false});
  postObjectTask([buffer, cache, callback = std::move(callback)] { callback(buffer->toImageBuffer()); });
}

std::shared_ptr<RenderVideoWorker::RenderingBuffer> RenderVideoWorker::renderLayers(const Edit::Scene& scene,
                                                                                   std::int32_t frame,
                                                                                   std::uint32_t frameOffset,
                                                                                   std::int32_t lastLayer) {
  auto buffer = std::make_shared<RenderingBuffer>(device_, static_cast<std::uint32_t>(scene.width),
                                                  static_cast<std::uint32_t>(scene.height));
  auto cache = std::make_shared<ResourceCache>(temporaryImageCacheSize_);
  renderSection(SectionArguments{scene, frame, *buffer, *cache, nullptr, frameOffset, lastLayer, true});
  keepAliveUntilDrawn(std::make_shared<std::pair<std::shared_ptr<RenderingBuffer>, std::shared_ptr<ResourceCache>>>(
      buffer, std::move(cache)));
  return buffer;
}

void RenderVideoWorker::reportLeftOut(const Edit::Object& object, const Effect::NotImplemented& missing) {
  const std::string name = System::Text::toUtf8(object.effects.front()->name());
  {
    std::lock_guard lock(leftOutMutex_);
    if (!leftOut_.insert(name + '\n' + missing.place()).second) return;
  }
  System::Log::warn("Render::RenderWorkerBase::RenderSection", "object left out: [%s] on layer %d: %s is not built yet",
                    name.c_str(), object.layer + 1, missing.place().c_str());
}

void RenderVideoWorker::postObjectTask(std::function<void()> work) {
  if (stopping_) return;
  objectSlots_.acquire();
  device_.post([this, work = std::move(work)] {
    // The slot is free once the task is taken, not when it has finished.
    objectSlots_.release();
    if (stopping_) return;
    try {
      work();
    } catch (const std::exception& exception) {
      objectTaskFailed_ = true;
      Worker::WorkerThread::reportTaskFailure(kObjectWorkerName, exception);
    }
  });
}

void RenderVideoWorker::keepAliveUntilDrawn(std::shared_ptr<void> keep) {
  device_.post([keep = std::move(keep)] {});
}

bool RenderVideoWorker::awaitObjectTasks() {
  // The GPU thread runs its work in order: an empty task passes after all before it.
  device_.run([] {});
  return !stopping_;
}

}  // namespace Render
