#include "render/MoviePlayerInstance.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include "anchor/AnchorList.h"
#include "edit/EditService.h"
#include "edit/Scene.h"
#include "event/EventService.h"
#include "media/RenderBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "render/AudioOutputDevice.h"
#include "render/RenderAudioWorker.h"
#include "render/RenderVideoWorker.h"
#include "sync/Timer.h"
#include "system/Singleton.h"

namespace Render {

namespace {

constexpr double kStartDelay = 0.333;   // seconds before the picture starts without waiting
constexpr double kWaitLimit = 600.0;    // the same when waiting for the read-ahead
constexpr double kFrameTolerance = 0.016;
constexpr double kEndGrace = 0.05;
constexpr double kUnderrunRestart = 1.0;  // scene seconds before sound comes back
constexpr std::int32_t kRequestsPerTick = 4;
constexpr std::int32_t kFramesPerTick = 4;
constexpr std::uint32_t kMaxDeviceBuffers = 64;
constexpr std::uint64_t kMaxDeviceBytes = 3'840'000;  // 10 s of 48 kHz float stereo

// Counts a request until its task is gone, run or dropped: the token rides in the
// callback, which the worker destroys either way.
std::shared_ptr<void> pendingToken(const std::shared_ptr<std::atomic<std::int32_t>>& pending) {
  ++*pending;
  return std::shared_ptr<void>(nullptr, [pending](void*) { --*pending; });
}

Event::EventService* events() { return System::Singleton<Event::EventService>::get(); }

}  // namespace

std::int32_t MoviePlayerInstance::videoBufferFramesFor(std::int32_t bufferTime, std::int32_t rate, std::int32_t scale) {
  const double seconds = std::max(bufferTime, 0) / 1000.0;
  return std::max(2, static_cast<std::int32_t>(std::lround(rate * seconds / scale)));
}

std::int32_t MoviePlayerInstance::audioBufferFramesFor(std::int32_t bufferTime, std::int32_t rate, std::int32_t scale) {
  // Sound keeps at least a second ahead.
  const double seconds = std::max(std::max(bufferTime, 0) / 1000.0, 1.0);
  return std::max(2, static_cast<std::int32_t>(std::lround(seconds * rate / scale)));
}

MoviePlayerInstance::MoviePlayerInstance(const Parts& parts)
    : edit_(parts.edit), video_(parts.video), audio_(parts.audio), output_(parts.output) {
  config_.setSection("Player");
  config_.add<System::Config::Int>("Volume", &settings_.volume, 100);
  config_.add<System::Config::Int>("BufferTime", &settings_.bufferTime, 500);
  config_.add<System::Config::Int>("VisibleLevelMeter", &settings_.visibleLevelMeter, 1);
  config_.add<System::Config::Int>("LevelMeterOnlyPlayback", &settings_.levelMeterOnlyPlayback, 0);
  config_.add<System::Config::Int>("LevelMeterThresholdRed", &settings_.levelMeterThresholdRed, -3);
  config_.add<System::Config::Int>("LevelMeterThresholdYellow", &settings_.levelMeterThresholdYellow, -20);
  config_.load(parts.ini);
  if (parts.ownTimer) timer_ = std::make_unique<Sync::Timer>([this] { tick(); });
  // An edit, a change of scene and the end of the program each stop a run.
  if (edit_) {
    edit_->setPlayerStop([this] {
      stop(false);
      // A meter request waiting for the model's lock would queue behind the edit, and a
      // render thread that waits for the worker under its own lock would hold the edit.
      settleMeter();
    });
  }
  if (Event::EventService* service = events()) {
    subscriptions_.add(service->sceneChanged, [this](std::int32_t) { stop(false); });
    subscriptions_.add(service->applicationEnd, [this] { stop(false); });
  }
}

MoviePlayerInstance::~MoviePlayerInstance() {
  subscriptions_.clear();
  if (edit_) edit_->setPlayerStop(nullptr);
  stop(false);
  // No meter request may call into a player that is gone.
  settleMeter();
}

void MoviePlayerInstance::settleMeter() {
  if (!meterAsked_ || audio_->stopped()) return;
  audio_->cancel(RenderAudioWorker::Preview);
  audio_->waitRendering();
}

double MoviePlayerInstance::frameTime(std::int64_t frame) const {
  return static_cast<double>(frame) * scale_ / rate_;
}

double MoviePlayerInstance::clock() const {
  return std::chrono::duration<double>(Clock::now() - clockOrigin_).count() * speed_;
}

void MoviePlayerInstance::setClock(double seconds) {
  clockOrigin_ = Clock::now() - std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds / speed_));
}

void MoviePlayerInstance::setVolume(std::int32_t percent) {
  settings_.volume = percent;
  if (output_) output_->setVolume(percent);
}

void MoviePlayerInstance::setSpeed(std::int32_t percent) { speed_ = std::max(percent, 1) / 100.0; }

void MoviePlayerInstance::start(bool waitForBuffer) {
  if (playing_ || !edit_ || !edit_->currentScene()) return;
  const Edit::Scene& scene = *edit_->currentScene();
  startRange(scene.cursorFrame, std::max(scene.cursorFrame, scene.lastUsedFrame()), waitForBuffer);
}

void MoviePlayerInstance::startRange(std::int32_t first, std::int32_t last, bool waitForBuffer) {
  if (playing_ || !edit_ || !edit_->currentScene() || !audio_) return;
  Edit::Scene& scene = *edit_->currentScene();
  rate_ = scene.videoRate > 0 ? scene.videoRate : 30;
  scale_ = scene.videoScale > 0 ? scene.videoScale : 1;
  sampleRate_ = static_cast<std::uint32_t>(std::max(scene.audioRate, 1));
  runStart_ = startFrame_ = first;
  endFrame_ = std::max(first, last);
  nextVideoFrame_ = nextAudioFrame_ = startFrame_;
  startTime_ = frameTime(startFrame_);
  endTime_ = frameTime(endFrame_);
  videoBufferFrames_ = videoBufferFramesFor(settings_.bufferTime, rate_, scale_);
  audioBufferFrames_ = audioBufferFramesFor(settings_.bufferTime, rate_, scale_);
  resetMeter();
  {
    std::lock_guard lock(videoMutex_);
    statistics_ = Statistics{};
    lastVideoArrival_ = {};
    videoRequests_.clear();
  }
  if (video_) video_->setEarliestFrame(startFrame_);
  if (output_ && output_->createPlayer(static_cast<std::uint32_t>(std::lround(sampleRate_ * speed_)))) {
    output_->setVolume(settings_.volume);
  }
  // The clock starts behind the first frame; the hold moves it up once the queues are full.
  setClock(startTime_ - (waitForBuffer ? kWaitLimit : kStartDelay));
  if (timer_) timer_->setInterval(kTickMilliseconds);
  playFrame_ = startFrame_;
  scene.playing = true;
  playing_ = true;
  if (Event::EventService* service = events()) service->playStateChanged.fire(true);
}

void MoviePlayerInstance::stop(bool returnToStart) {
  if (!playing_) return;
  playing_ = false;
  if (timer_) timer_->clear();
  if (output_) output_->stop();
  clearWorkers();
  {
    std::lock_guard lock(videoMutex_);
    videoQueue_.clear();
  }
  {
    std::lock_guard lock(audioMutex_);
    audioQueue_.clear();
  }
  resetMeter();
  if (output_) output_->clearBuffer();
  if (edit_ && edit_->currentScene()) {
    Edit::Scene& scene = *edit_->currentScene();
    scene.playing = false;
    scene.cursorFrame = returnToStart ? runStart_ : playFrame_.load();
  }
  if (Event::EventService* service = events()) service->playStateChanged.fire(false);
}

void MoviePlayerInstance::seek(std::int32_t frame) {
  const bool wasPlaying = playing_;
  stop(false);
  if (edit_ && edit_->currentScene()) edit_->currentScene()->cursorFrame = frame;
  if (wasPlaying) start(false);
}

void MoviePlayerInstance::clearWorkers() {
  // Waiting playback frames are passed over quickly once every frame counts as past.
  if (video_) {
    video_->setEarliestFrame(INT32_MAX);
    video_->waitRendering();
  }
  if (audio_) {
    audio_->cancel(RenderAudioWorker::Playback);
    audio_->waitRendering();
  }
}

void MoviePlayerInstance::resetMeter() {
  std::lock_guard lock(levelMutex_);
  levelQueue_.clear();
  reading_ = LevelRecord{};
  meter_.reset(rate_, scale_);
}

void MoviePlayerInstance::tick() {
  if (!playing_) return;
  videoStep();
  audioStep();
  if (playing_ && clock() > endTime_ + kEndGrace) {
    playFrame_ = endFrame_;
    stop(false);
  }
}

void MoviePlayerInstance::clockHold() {
  if (clock() >= startTime_) return;
  if (*videoPending_ > 0 || *audioPending_ > 0) return;
  setClock(startTime_);
}

void MoviePlayerInstance::videoStep() {
  {
    std::unique_lock lock(videoMutex_);
    if (nextVideoFrame_ > endFrame_ || !video_) {
      lock.unlock();
      clockHold();
    } else {
      const auto queued = static_cast<std::int32_t>(videoQueue_.size());
      lock.unlock();
      if (queued >= videoBufferFrames_) clockHold();
      const std::int32_t pending = videoBufferFrames_ - queued - *videoPending_;
      for (std::int32_t i = 0; i < std::min(pending, kRequestsPerTick) && nextVideoFrame_ <= endFrame_; ++i) {
        requestVideo(nextVideoFrame_++);
      }
    }
  }
  for (std::int32_t shown = 0; shown < kFramesPerTick && playing_; ++shown) {
    std::unique_lock lock(videoMutex_);
    if (videoQueue_.empty()) return;
    const VideoRecord& front = videoQueue_.front();
    const double due = frameTime(front.frame);
    double now = clock();
    if (due > now + kFrameTolerance) return;
    // Within the tolerance the frame is shown at its moment exactly.
    while (now < due) now = clock();
    if (now > frameTime(std::int64_t{front.frame} + 1) && videoQueue_.size() >= 2) {
      ++statistics_.framesLate;
      playFrame_ = front.frame;
    } else {
      ++statistics_.framesShown;
      playFrame_ = front.frame;
      if (frameShown_) frameShown_(front);
      if (Event::EventService* service = events()) service->previewFrameReady.fire(front.frame, 2);
    }
    videoQueue_.pop_front();
  }
}

void MoviePlayerInstance::requestVideo(std::int32_t frame) {
  {
    std::lock_guard lock(videoMutex_);
    videoRequests_.emplace_back(frame, Clock::now());
  }
  video_->requestRenderingFrame(
      RenderVideoWorker::Playback, frame,
      [this, token = pendingToken(videoPending_)](std::int32_t delivered, Media::RenderBuffer& buffer,
                                                   Anchor::AnchorList&) { videoArrived(delivered, buffer); });
}

void MoviePlayerInstance::videoArrived(std::int32_t frame, Media::RenderBuffer& buffer) {
  if (!playing_) return;
  const Clock::time_point arrived = Clock::now();
  std::shared_ptr<Media::ImageBuffer> image = frameCopy_ ? frameCopy_(buffer) : nullptr;
  std::lock_guard lock(videoMutex_);
  // The worker's time on this frame: it began when the frame before was delivered, or
  // when it was asked for if the worker was idle then. Frames passed over in between
  // are dropped from the record.
  while (!videoRequests_.empty() && videoRequests_.front().first < frame) videoRequests_.pop_front();
  if (!videoRequests_.empty() && videoRequests_.front().first == frame) {
    const double seconds = std::chrono::duration<double>(arrived - std::max(lastVideoArrival_, videoRequests_.front().second)).count();
    videoRequests_.pop_front();
    ++statistics_.framesTimed;
    statistics_.totalFrameSeconds += seconds;
    statistics_.worstFrameSeconds = std::max(statistics_.worstFrameSeconds, seconds);
  }
  lastVideoArrival_ = arrived;
  const auto clockFrame = static_cast<std::int32_t>(std::lround(clock() * rate_ / scale_));
  video_->setEarliestFrame(clockFrame);
  if (frame + 1 < clockFrame && !videoQueue_.empty()) return;
  videoQueue_.push_back(VideoRecord{frame, std::move(image)});
}

void MoviePlayerInstance::audioStep() {
  if (output_ && output_->started() && output_->reap() == 0) {
    // The output ran dry: start the sound again a second later in scene time, in step
    // with the picture.
    output_->stop();
    output_->clearBuffer();
    audio_->cancel(RenderAudioWorker::Playback);
    audio_->waitRendering();
    {
      std::lock_guard lock(audioMutex_);
      audioQueue_.clear();
      startTime_ = clock() + kUnderrunRestart;
      nextAudioFrame_ = static_cast<std::int32_t>(std::lround(startTime_ * rate_ / scale_));
    }
    resetMeter();
    std::lock_guard lock(videoMutex_);
    ++statistics_.audioUnderruns;
  }
  std::int32_t pending = 0;
  {
    std::lock_guard lock(audioMutex_);
    if (nextAudioFrame_ <= endFrame_) {
      pending = audioBufferFrames_ - static_cast<std::int32_t>(audioQueue_.size()) - *audioPending_;
    }
  }
  for (std::int32_t i = 0; i < std::min(pending, kRequestsPerTick) && nextAudioFrame_ <= endFrame_; ++i) {
    requestAudio(nextAudioFrame_++);
  }
  if (output_ && output_->exists() && !output_->started() && clock() >= startTime_) output_->play();
  if (!output_ || !output_->exists()) {
    // Silent: the mixes still come for the meter, and go nowhere.
    std::lock_guard lock(audioMutex_);
    audioQueue_.clear();
    return;
  }
  std::lock_guard lock(audioMutex_);
  while (!audioQueue_.empty()) {
    if (output_->reap() >= kMaxDeviceBuffers || output_->submittedBytes() >= kMaxDeviceBytes) break;
    output_->submitBuffer(std::move(audioQueue_.front().samples));
    audioQueue_.pop_front();
  }
}

void MoviePlayerInstance::requestAudio(std::int32_t frame) {
  audio_->requestFrame(RenderAudioWorker::Playback, frame,
                       [this, token = pendingToken(audioPending_)](std::int32_t delivered, Media::AudioBuffer& mix) {
                         audioArrived(delivered, mix);
                       });
}

void MoviePlayerInstance::audioArrived(std::int32_t frame, const Media::AudioBuffer& mix) {
  if (!playing_) return;
  if (settings_.visibleLevelMeter != 0) {
    std::lock_guard lock(levelMutex_);
    levelQueue_.push_back(meter_.measure(frame, mix));
  }
  AudioRecord record;
  record.frame = frame;
  const std::uint32_t count = mix.sampleCount();
  record.samples.resize(std::size_t{count} * 2 * sizeof(float));
  auto* out = reinterpret_cast<float*>(record.samples.data());
  const float* left = mix.channelData(0);
  const float* right = mix.channelData(1);
  for (std::uint32_t i = 0; i < count; ++i) {
    out[2 * i] = left[i];
    out[2 * i + 1] = right[i];
  }
  std::lock_guard lock(audioMutex_);
  audioQueue_.push_back(std::move(record));
}

LevelRecord MoviePlayerInstance::levelRecordsUpTo(std::int32_t frame) {
  std::lock_guard lock(levelMutex_);
  while (!levelQueue_.empty() && levelQueue_.front().frame <= frame) {
    reading_ = levelQueue_.front();
    levelQueue_.pop_front();
  }
  return reading_;
}

void MoviePlayerInstance::meterAt(std::int32_t frame) {
  if (playing_ || !audio_ || settings_.visibleLevelMeter == 0 || settings_.levelMeterOnlyPlayback != 0) return;
  meterAsked_ = true;
  audio_->requestFrame(RenderAudioWorker::Preview, frame, [this](std::int32_t delivered, Media::AudioBuffer& mix) {
    std::lock_guard lock(levelMutex_);
    levelQueue_.push_back(meter_.measure(delivered, mix));
  });
}

MoviePlayerInstance::Statistics MoviePlayerInstance::statistics() const {
  std::lock_guard lock(videoMutex_);
  return statistics_;
}

}  // namespace Render
