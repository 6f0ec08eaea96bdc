// Turns a request for a frame of the current scene into a finished frame. Two threads
// share the work: the render thread reads the model under the scene reader and walks
// the layers, deciding what is drawn in which order; the object tasks, everything that
// touches the device, run on the GPU thread itself, at most 8 of them waiting. The
// bound keeps the walker a few objects ahead of the GPU instead of letting memory grow,
// and a GPU thread with work queued goes from one object to the next without a thread
// switch. Requests come from any thread; what a frame produced is handed to its
// callback on the render thread, after every object task of the frame has run.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "anchor/AnchorList.h"
#include "media/RenderBuffer.h"
#include "render/PreInputBuffer.h"
#include "render/RenderWorkerBase.h"
#include "sync/Semaphore.h"
#include "system/ConfigGroup.h"
#include "worker/WorkerThread.h"

namespace Edit {
class EditService;
class Object;
class Scene;
}  // namespace Edit
namespace Effect {
class NotImplemented;
}
namespace Media {
class FramePasses;
class GraphicsDevice;
class ImageBuffer;
class ResourceBuffer;
}  // namespace Media
namespace Setting {
class SettingService;
}
namespace System {
class IniFile;
}

namespace Render {

class ResourceCache;

// What one walk over the layers of a scene is given.
struct SectionArguments {
  const Edit::Scene& scene;
  std::int32_t frame;
  Media::RenderBuffer& target;
  ResourceCache& cache;
  Anchor::AnchorList* guides;  // the preview's requests only
  std::uint32_t frameOffset;   // how far a sub-render's moment lies behind its caller's frame
  std::int32_t lastLayer;
  bool subRender;
};

// What the worker reads once at its start.
struct VideoWorkerSettings {
  std::uint64_t temporaryImageCacheSize = 0;  // pixels, for each frame's temporary images
  std::array<float, 4> clippingMaskColour{};  // premultiplied
  System::IniFile* mainIni = nullptr;         // section "Render.video"; none keeps the defaults

  // TemporaryImageCacheSize of the system file (required), ClippingObjectMask of the
  // style's colours, and the main ini.
  static VideoWorkerSettings read(Setting::SettingService& settings);
};

class RenderVideoWorker : public RenderWorkerBase {
 public:
  // The kinds of request, which are also the task kinds of the render thread.
  enum Mode : std::int32_t {
    Preview = 1,   // only the newest waiting one counts; collects the guides
    Playback = 2,  // skipped when the player's clock has passed its frame
    Single = 3,    // never dropped: a frame somebody waits for
  };

  // The frame buffer lives until the callback returns: the callback takes what it needs.
  using FrameCallback = std::function<void(std::int32_t frame, Media::RenderBuffer& buffer, Anchor::AnchorList& guides)>;
  using ImageCallback = std::function<void(std::shared_ptr<Media::ImageBuffer> image)>;
  // The walk over the layers between the start and the end of a section: it posts the
  // objects' drawing with postObjectTask.
  using LayerWalk = std::function<void(RenderVideoWorker& worker, const SectionArguments& arguments)>;

  // A frame that other objects may go on reading after its render: held through the
  // pre-input base.
  class RenderingBuffer : public PreInputBuffer, public Media::RenderBuffer {
   public:
    using Media::RenderBuffer::RenderBuffer;
  };

  // Both threads start here and wait for work.
  RenderVideoWorker(Media::GraphicsDevice& device, Edit::EditService& edit, const VideoWorkerSettings& settings);
  // Stops as stop() does; the section "Render.video" is stored.
  ~RenderVideoWorker();
  RenderVideoWorker(const RenderVideoWorker&) = delete;
  RenderVideoWorker& operator=(const RenderVideoWorker&) = delete;

  // The one door for whole frames, from any thread. A preview request first drops the
  // preview requests still waiting; a frame that has started always runs to its end.
  void requestRenderingFrame(std::int32_t mode, std::int32_t frame, FrameCallback callback);
  // Returns once everything requested before has been rendered and delivered (or
  // dropped). Not from the render thread.
  void waitRendering() { renderThread_.wait(); }

  // A playback request for a frame below this one is out of date when its turn comes.
  // The player stores the frame of its clock; a stale read costs one frame's work.
  void setEarliestFrame(std::int32_t frame) noexcept { earliestFrame_.store(frame, std::memory_order_relaxed); }
  std::int32_t earliestFrame() const noexcept { return earliestFrame_.load(std::memory_order_relaxed); }

  // Nested renders, on the render thread in the course of an outer frame's walk, so
  // that their GPU tasks queue ahead of the tasks that use the result.
  // A whole other scene, for a scene used as video: `callback` gets the image from the
  // object thread.
  void renderSceneImage(const std::shared_ptr<Edit::Scene>& scene, std::int32_t frame, ImageCallback callback);
  // The layers of `scene` down to `lastLayer` as they stood at `frame`, for a scene
  // change. The buffer is complete once the object thread has passed this point.
  std::shared_ptr<RenderingBuffer> renderLayers(const Edit::Scene& scene, std::int32_t frame, std::uint32_t frameOffset,
                                                std::int32_t lastLayer);

  // Replaces the walk over the layers, for measuring and testing the scheduling alone.
  void setLayerWalk(LayerWalk walk) { layerWalk_ = std::move(walk); }
  // The shared frame passes, which clipping composes with; none leaves clips undrawn.
  void setFramePasses(Media::FramePasses* passes) noexcept { framePasses_ = passes; }
  Media::FramePasses* framePasses() const noexcept { return framePasses_; }
  // Called on the render thread as each top-level frame begins, before the walk: the
  // media caches roll their per-frame counters here.
  void setFrameBeginHook(std::function<void()> hook) { frameBeginHook_ = std::move(hook); }

  // Queues drawing of the frame being walked, from the render thread. It runs on the GPU
  // thread, in posting order; this blocks while 8 tasks wait. A task that throws is
  // logged and reported as a failed task of "RenderObjectWorkerVideo", and costs its
  // frame the callback.
  void postObjectTask(std::function<void()> work);

  // The object tasks, then the render thread: waiting object tasks are skipped, the
  // running frame is abandoned without its callback, waiting requests are dropped, and
  // nothing is delivered after this returns. Main thread; a second call does nothing.
  void stop();

  // For the effects, on the object thread.
  Media::GraphicsDevice& device() noexcept { return device_; }
  Anchor::AnchorList& guides() noexcept { return guides_; }
  // What the last object drawn produced; released by control objects and at the end of
  // each walk.
  std::unique_ptr<Media::ResourceBuffer>& lastImage() noexcept { return lastImage_; }
  const std::array<float, 4>& clippingMaskColour() const noexcept { return clippingMaskColour_; }
  bool gridXY() const noexcept { return gridXY_ != 0; }
  bool cameraGrid() const noexcept { return cameraGrid_ != 0; }
  bool visibleClippingObject() const noexcept { return visibleClippingObject_ != 0; }
  bool cameraFreeView() const noexcept { return cameraFreeView_ != 0; }

  // An object whose effects cannot draw yet is left out of the frame, which goes on: the
  // gap is logged as a warning, once for each effect and operation.
  void reportLeftOut(const Edit::Object& object, const Effect::NotImplemented& missing);

 private:
  void renderFrame(std::int32_t mode, std::int32_t frame, const FrameCallback& callback);
  // The start and the end of a walk around the layer walk: the target sized to the
  // scene and cleared, the scene marked as rendered, the last image released.
  void renderSection(const SectionArguments& arguments);
  // The buffer of the frame before when nobody holds it any more, else a new one.
  std::shared_ptr<RenderingBuffer> takeFrameBuffer(const Edit::Scene& scene);
  // The barrier before delivery; false when the worker is stopping and the frame is
  // incomplete.
  bool awaitObjectTasks();
  // Queues `keep` to be dropped on the GPU thread once the tasks before it have run.
  void keepAliveUntilDrawn(std::shared_ptr<void> keep);

  Media::GraphicsDevice& device_;
  Edit::EditService& edit_;
  std::uint64_t temporaryImageCacheSize_;
  std::unique_ptr<Media::ResourceBuffer> lastImage_;
  System::Config::Group config_;
  std::int32_t gridXY_ = 0;
  std::int32_t cameraGrid_ = 1;
  std::int32_t visibleClippingObject_ = 1;
  std::int32_t cameraFreeView_ = 0;
  std::atomic<std::int32_t> earliestFrame_{0};
  std::array<float, 4> clippingMaskColour_;
  Anchor::AnchorList guides_;
  LayerWalk layerWalk_;
  Media::FramePasses* framePasses_ = nullptr;
  std::mutex leftOutMutex_;
  std::set<std::string> leftOut_;
  std::function<void()> frameBeginHook_;
  std::shared_ptr<RenderingBuffer> spareBuffer_;
  std::atomic<bool> stopping_{false};
  std::atomic<bool> objectTaskFailed_{false};
  Sync::Semaphore objectSlots_;
  // Last, so that it starts once everything it uses exists.
  Worker::WorkerThread renderThread_{"RenderVideoWorker"};
};

}  // namespace Render
