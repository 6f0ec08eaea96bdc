#include "render/RenderAudioWorker.h"

#include <cmath>
#include <exception>
#include <utility>

#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "edit/SceneReader.h"
#include "effect/EffectBase.h"
#include "media/audio/AudioBlockBuffer.h"
#include "render/RenderAudioSection.h"
#include "system/Log.h"
#include "system/Text.h"

namespace Render {

namespace {

constexpr std::int32_t kObjectTasksAhead = 10;
constexpr std::int32_t kObjectTaskKind = 0;
constexpr const char* kObjectWorkerName = "RenderObjectWorkerAudio";

}  // namespace

std::int64_t frameStartSample(std::int64_t frame, std::uint32_t sampleRate, std::int32_t rate, std::int32_t scale) {
  if (rate <= 0) return 0;
  return std::llround(static_cast<double>(sampleRate) * static_cast<double>(frame) * scale / rate);
}

std::int64_t frameStartSample(const Edit::Scene& scene, std::int64_t frame) {
  return frameStartSample(frame, static_cast<std::uint32_t>(scene.audioRate), scene.videoRate, scene.videoScale);
}

std::uint32_t frameSpan(const Edit::Scene& scene, std::int64_t frame) {
  return static_cast<std::uint32_t>(frameStartSample(scene, frame + 1) - frameStartSample(scene, frame));
}

RenderAudioWorker::RenderAudioWorker(Edit::EditService& edit) : edit_(edit) { objectThread_.setMax(kObjectTasksAhead); }

RenderAudioWorker::~RenderAudioWorker() { stop(); }

void RenderAudioWorker::stop() {
  stopping_ = true;
  // The object thread first: a walker waiting for room goes on, its further posts are
  // dropped, and the frame under way sees the stop at its barrier.
  objectThread_.stop();
  frameThread_.stop();
}

void RenderAudioWorker::requestFrame(std::int32_t mode, std::int32_t frame, FrameCallback callback) {
  if (mode == Preview) frameThread_.cancel(Preview);
  frameThread_.post(mode, [this, frame, callback = std::move(callback)] {
    Media::AudioBuffer mix;
    {
      const Edit::SceneReader reader(edit_);
      renderFrame(frame, mix, *reader.scene());
      if (!awaitObjectTasks()) return;
    }
    callback(frame, mix);
  });
}

std::shared_ptr<RenderAudioWorker::RenderingBuffer> RenderAudioWorker::startRendering(std::shared_ptr<Edit::Scene> scene,
                                                                                    std::int32_t frame) {
  auto rendering = std::make_shared<RenderingBuffer>();
  // The event is set however the task ends, run or dropped, so no reader waits forever.
  std::shared_ptr<Sync::Event> done(&rendering->done, [keep = rendering](Sync::Event* event) { event->set(); });
  frameThread_.post(Single, [this, scene = std::move(scene), frame, rendering, done = std::move(done)] {
    // No reader of its own: the asker holds one until it has what it waits for, and a
    // second shared lock taken here would queue behind a waiting edit that waits for the
    // asker's.
    renderFrame(frame, rendering->buffer, *scene);
    if (!awaitObjectTasks()) rendering->buffer = Media::AudioBuffer();
  });
  return rendering;
}

void RenderAudioWorker::renderFrame(std::int32_t frame, Media::AudioBuffer& target, const Edit::Scene& scene) {
  const std::lock_guard walk(walkMutex_);
  clearActiveScenes();
  try {
    renderSection(scene, frame, target);
  } catch (...) {
    // No task of this frame may outlive the reader or the target.
    awaitObjectTasks();
    throw;
  }
}

void RenderAudioWorker::renderSection(const Edit::Scene& scene, std::int32_t frame, Media::AudioBuffer& target) {
  const std::uint32_t span = frameSpan(scene, frame);
  postObjectTask([&target, span] {
    target.allocate(span, 2);
    target.clear();
  });
  const ActiveScene active(*this, sceneKey(scene.id, false));
  if (!active.entered()) return;
  RenderAudioSection walk(*this, scene, frame, target);
}

void RenderAudioWorker::createSceneAudioBlock(const std::shared_ptr<Edit::Scene>& scene, std::int32_t block,
                                              BlockCallback callback) {
  const std::lock_guard walk(walkMutex_);
  const auto rate = static_cast<std::uint32_t>(scene->audioRate);
  auto out = std::make_shared<Media::AudioBlockBuffer>(rate, 2);
  out->clear();
  auto rendered = std::make_shared<Media::AudioBuffer>();
  const std::int64_t start = std::int64_t{block} * rate;
  std::int64_t frame = scene->videoScale > 0 && rate > 0
                           ? std::int64_t{scene->videoRate} * start / (std::int64_t{scene->videoScale} * rate)
                           : 0;
  std::int64_t filled = 0;
  // What lies past the scene's last frame stays silent.
  while (filled < rate && frame <= scene->lastUsedFrame()) {
    renderSection(*scene, static_cast<std::int32_t>(frame), *rendered);
    const std::int64_t offset = start - frameStartSample(*scene, frame) + filled;
    const std::uint32_t span = frameSpan(*scene, frame);
    if (offset > span) {
      System::Log::error("Render::RenderAudioWorker::createSceneAudioBlock", "invalid rendering sample position.");
      break;
    }
    postObjectTask([out, rendered, filled, offset, span] {
      if (rendered->sampleCount() != span) {
        System::Log::error("Render::RenderAudioWorker::createSceneAudioBlock", "invalid rendering sample num.");
        return;
      }
      out->copyFrom(static_cast<std::uint32_t>(filled), *rendered, static_cast<std::uint32_t>(offset), span);
    });
    filled += span - offset;
    ++frame;
  }
  // Posted in order, so it runs after every copy.
  postObjectTask([out, callback = std::move(callback)] { callback(out); });
}

void RenderAudioWorker::postObjectTask(std::function<void()> work) {
  if (stopping_) return;
  objectThread_.post(kObjectTaskKind, [this, work = std::move(work)] {
    if (stopping_) return;
    try {
      work();
    } catch (const std::exception& exception) {
      Worker::WorkerThread::reportTaskFailure(kObjectWorkerName, exception);
    }
  });
}

bool RenderAudioWorker::awaitObjectTasks() {
  if (stopping_) return false;
  try {
    objectThread_.wait();
  } catch (const System::Exception&) {
    return false;  // stopped while this frame walked
  }
  return !stopping_;
}

void RenderAudioWorker::reportLeftOut(const Edit::Object& object, const Effect::NotImplemented& missing) {
  const std::string name = System::Text::toUtf8(object.effects.front()->name());
  {
    std::lock_guard lock(leftOutMutex_);
    if (!leftOut_.insert(name + '\n' + missing.place()).second) return;
  }
  System::Log::warn("Render::RenderWorkerBase::RenderSection", "object left out: [%s] on layer %d: %s is not built yet",
                    name.c_str(), object.layer + 1, missing.place().c_str());
}

}  // namespace Render
