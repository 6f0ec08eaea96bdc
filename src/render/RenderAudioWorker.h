// Turns a scene into sound, one video frame's span of samples at a time. Two threads
// share the work: the frame thread ("RenderAudioWorker") takes requests, reads the model
// under the scene reader and walks the layers; the object thread
// ("RenderObjectWorkerAudio") reads the sources, runs the filters and mixes, in posting
// order, at most 10 tasks waiting. The single object thread makes the mix race-free
// without a lock, and puts a sound group's gains in place before its members mix.
// Requests come from any thread; results are handed over on the frame thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "media/audio/AudioBuffer.h"
#include "render/PreInputBuffer.h"
#include "render/RenderWorkerBase.h"
#include "sync/Event.h"
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
class AudioBlockBuffer;
}

namespace Render {

// The frame-to-sample grid of a scene: the first sample of frame f is
// llround(sampleRate × f × scale / rate), worked in double, so frames of a rate that
// does not divide the sample rate differ by one sample and never drift apart.
std::int64_t frameStartSample(std::int64_t frame, std::uint32_t sampleRate, std::int32_t rate, std::int32_t scale);
std::int64_t frameStartSample(const Edit::Scene& scene, std::int64_t frame);
std::uint32_t frameSpan(const Edit::Scene& scene, std::int64_t frame);

class RenderAudioWorker : public RenderWorkerBase {
 public:
  // The kinds of request, which are also the task kinds of the frame thread.
  enum Mode : std::int32_t {
    Preview = 1,   // only the newest waiting one counts
    Playback = 2,  // dropped by the player's stop
    Single = 3,    // never dropped
  };

  // The mix of one frame, stereo, the span of the frame long. It lives until the
  // callback returns: the callback takes what it needs.
  using FrameCallback = std::function<void(std::int32_t frame, Media::AudioBuffer& mix)>;
  using BlockCallback = std::function<void(std::shared_ptr<Media::AudioBlockBuffer> block)>;

  // A frame's mix that another reader waits for: `done` is set once `buffer` is complete,
  // or once the request was dropped, with the buffer left empty.
  class RenderingBuffer : public PreInputBuffer {
   public:
    Media::AudioBuffer buffer;
    Sync::Event done;
  };

  explicit RenderAudioWorker(Edit::EditService& edit);
  // Stops as stop() does.
  ~RenderAudioWorker();
  RenderAudioWorker(const RenderAudioWorker&) = delete;
  RenderAudioWorker& operator=(const RenderAudioWorker&) = delete;

  // The mix of frame `frame` of the current scene. A preview request first drops the
  // preview requests still waiting.
  void requestFrame(std::int32_t mode, std::int32_t frame, FrameCallback callback);
  // The mix of a frame of `scene`, queued as a single request, for a reader that holds
  // a scene reader (a render thread drawing the scene's waveform, a script) and keeps it
  // until `done` is set: the mix is made under that reader's lock.
  std::shared_ptr<RenderingBuffer> startRendering(std::shared_ptr<Edit::Scene> scene, std::int32_t frame);
  // One second of `scene`'s sound from second `block`, for a scene used as a source.
  // The walk runs on the calling thread, which holds a scene reader (the frame thread, in
  // the prepares of the objects that read the scene); `callback` gets the block on the
  // object thread once every frame in it has been mixed.
  void createSceneAudioBlock(const std::shared_ptr<Edit::Scene>& scene, std::int32_t block, BlockCallback callback);

  // Drops the waiting requests of one kind; the one running goes on.
  void cancel(std::int32_t mode) { frameThread_.cancel(mode); }
  // Returns once everything requested before has been delivered or dropped. Not from the
  // worker's threads.
  void waitRendering() { frameThread_.wait(); }
  // Waiting object tasks are skipped, the running request ends without its callback,
  // waiting requests are dropped; nothing is delivered after this returns. A second call
  // does nothing.
  void stop();
  bool stopped() const noexcept { return stopping_; }

  // The walk of one frame of `scene` into `target`, from the frame thread: the target is
  // sized and cleared on the object thread first, then the objects' tasks follow.
  void renderSection(const Edit::Scene& scene, std::int32_t frame, Media::AudioBuffer& target);
  // Queues a task of the frame being walked; blocks while 10 wait. A task that throws is
  // logged and reported as a failed task of "RenderObjectWorkerAudio".
  void postObjectTask(std::function<void()> work);
  // An object whose effects have no sound operation yet is silent: warned once for each
  // effect and operation.
  void reportLeftOut(const Edit::Object& object, const Effect::NotImplemented& missing);

 private:
  void renderFrame(std::int32_t frame, Media::AudioBuffer& target, const Edit::Scene& scene);
  // The barrier before delivery; false when the worker is stopping.
  bool awaitObjectTasks();

  Edit::EditService& edit_;
  std::atomic<bool> stopping_{false};
  std::mutex leftOutMutex_;
  std::set<std::string> leftOut_;
  // Held for each walk, so that a scene block asked for from another thread waits for the
  // walk under way instead of sharing the set of active scenes with it.
  std::recursive_mutex walkMutex_;
  Worker::WorkerThread objectThread_{"RenderObjectWorkerAudio"};
  // Last, so that it starts once everything it uses exists and stops first.
  Worker::WorkerThread frameThread_{"RenderAudioWorker"};
};

}  // namespace Render
