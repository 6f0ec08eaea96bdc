// Plays the current scene in real time: a clock, a short queue of finished video frames
// and a queue of mixed sound a second or more ahead, both fed by requests to the render
// workers, the sound handed to the output ahead of time and played in step with the
// clock, and the level meter's values. A tick every 12 ms on the main thread does all
// the steering; start, stop, seek and the tick are for the main thread, frames and sound
// arrive on the workers' threads. Three mutexes guard the three queues, and no thread
// holds two of them at once.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "event/Subscriptions.h"
#include "render/LevelMeter.h"
#include "system/ConfigGroup.h"

namespace Edit {
class EditService;
class Scene;
}  // namespace Edit
namespace Media {
class AudioBuffer;
class ImageBuffer;
class RenderBuffer;
}  // namespace Media
namespace Sync {
class Timer;
}
namespace System {
class IniFile;
}

namespace Render {

class AudioOutputDevice;
class RenderAudioWorker;
class RenderVideoWorker;

// Section "Player".
struct PlayerSettings {
  std::int32_t volume = 100;      // percent
  std::int32_t bufferTime = 500;  // milliseconds of video read ahead
  std::int32_t visibleLevelMeter = 1;
  std::int32_t levelMeterOnlyPlayback = 0;
  std::int32_t levelMeterThresholdRed = -3;
  std::int32_t levelMeterThresholdYellow = -20;
};

class MoviePlayerInstance {
 public:
  static constexpr std::int32_t kTickMilliseconds = 12;

  // What a run did, for the command line's closing report.
  struct Statistics {
    std::int32_t framesShown = 0;     // presented on time
    std::int32_t framesLate = 0;      // due but late, passed over
    std::int32_t audioUnderruns = 0;  // times the output ran dry and sound was restarted
    std::int32_t framesTimed = 0;
    double totalFrameSeconds = 0.0;  // the video worker's time on each frame delivered
    double worstFrameSeconds = 0.0;
  };
  // A finished frame waiting to be shown: the CPU copy the preview draws, if the player
  // was given a way to make one.
  struct VideoRecord {
    std::int32_t frame = 0;
    std::shared_ptr<Media::ImageBuffer> image;
  };
  using FrameCopy = std::function<std::shared_ptr<Media::ImageBuffer>(Media::RenderBuffer& frame)>;
  using FrameShown = std::function<void(const VideoRecord& record)>;

  struct Parts {
    Edit::EditService* edit = nullptr;
    RenderVideoWorker* video = nullptr;  // none: sound only
    RenderAudioWorker* audio = nullptr;
    AudioOutputDevice* output = nullptr;  // none: silent
    System::IniFile* ini = nullptr;       // section "Player"; none keeps the defaults
    // Whether the player arms its own main-loop timer; without, its owner calls tick()
    // every kTickMilliseconds.
    bool ownTimer = true;
  };

  explicit MoviePlayerInstance(const Parts& parts);
  // Stops a run, and stores the settings.
  ~MoviePlayerInstance();
  MoviePlayerInstance(const MoviePlayerInstance&) = delete;
  MoviePlayerInstance& operator=(const MoviePlayerInstance&) = delete;

  // Plays the current scene from its cursor to its last frame. With `waitForBuffer` the
  // picture waits until the read-ahead is done; otherwise it starts a third of a second
  // after the call at the latest. Nothing when already playing.
  void start(bool waitForBuffer);
  // The same over frames first .. last.
  void startRange(std::int32_t first, std::int32_t last, bool waitForBuffer);
  // The cursor goes back to where the run began, or to the frame shown last.
  void stop(bool returnToStart);
  // Moves the cursor; a run under way starts again from there with empty queues.
  void seek(std::int32_t frame);
  void tick();

  bool playing() const noexcept { return playing_; }
  std::int32_t playFrame() const noexcept { return playFrame_; }
  // Seconds of scene time; what a frame is shown by.
  double clock() const;
  // Takes every level record up to `frame` and keeps the last as the reading.
  LevelRecord levelRecordsUpTo(std::int32_t frame);
  // A seek with the player stopped: the sound of `frame` is mixed as a preview request
  // and measured for the meter, unless the meter is off or kept to playback.
  void meterAt(std::int32_t frame);
  void setVolume(std::int32_t percent);
  // Percent of real time, 100 by default: the clock runs at that pace and the sound is
  // played at that share of its rate.
  void setSpeed(std::int32_t percent);
  const PlayerSettings& settings() const noexcept { return settings_; }
  // Used by the preview: the frame copy, and what is shown, which is called on the main
  // thread under the video lock. Set before a run.
  void setFrameCopy(FrameCopy copy) { frameCopy_ = std::move(copy); }
  void setFrameShown(FrameShown shown) { frameShown_ = std::move(shown); }
  Statistics statistics() const;

  // The queue lengths the settings give at a frame rate of rate / scale.
  static std::int32_t videoBufferFramesFor(std::int32_t bufferTime, std::int32_t rate, std::int32_t scale);
  static std::int32_t audioBufferFramesFor(std::int32_t bufferTime, std::int32_t rate, std::int32_t scale);

 private:
  struct AudioRecord {
    std::int32_t frame = 0;
    std::vector<std::byte> samples;  // interleaved float stereo
  };
  using Clock = std::chrono::steady_clock;

  double frameTime(std::int64_t frame) const;
  void setClock(double seconds);
  void clockHold();
  void videoStep();
  void audioStep();
  void requestVideo(std::int32_t frame);
  void requestAudio(std::int32_t frame);
  void videoArrived(std::int32_t frame, Media::RenderBuffer& buffer);
  void audioArrived(std::int32_t frame, const Media::AudioBuffer& mix);
  void clearWorkers();
  void resetMeter();
  // Drops the meter's waiting requests and waits for the one running.
  void settleMeter();

  Edit::EditService* edit_;
  RenderVideoWorker* video_;
  RenderAudioWorker* audio_;
  AudioOutputDevice* output_;
  // The settings outlive the group, which stores them as it goes.
  PlayerSettings settings_;
  System::Config::Group config_;
  std::unique_ptr<Sync::Timer> timer_;
  FrameCopy frameCopy_;
  FrameShown frameShown_;

  std::atomic<bool> playing_{false};
  bool meterAsked_ = false;
  std::int32_t rate_ = 30;
  std::int32_t scale_ = 1;
  std::uint32_t sampleRate_ = 48000;
  double speed_ = 1.0;
  std::int32_t runStart_ = 0;
  std::int32_t startFrame_ = 0;
  std::int32_t endFrame_ = 0;
  std::int32_t nextVideoFrame_ = 0;
  std::int32_t nextAudioFrame_ = 0;
  double startTime_ = 0.0;
  double endTime_ = 0.0;
  std::int32_t videoBufferFrames_ = 2;
  std::int32_t audioBufferFrames_ = 2;
  std::atomic<std::int32_t> playFrame_{0};
  Clock::time_point clockOrigin_{};
  // Requests handed to each worker and not yet delivered or dropped.
  std::shared_ptr<std::atomic<std::int32_t>> videoPending_ = std::make_shared<std::atomic<std::int32_t>>(0);
  std::shared_ptr<std::atomic<std::int32_t>> audioPending_ = std::make_shared<std::atomic<std::int32_t>>(0);

  mutable std::mutex videoMutex_;
  std::deque<VideoRecord> videoQueue_;
  Clock::time_point lastVideoArrival_{};
  std::deque<std::pair<std::int32_t, Clock::time_point>> videoRequests_;
  Statistics statistics_;

  std::mutex audioMutex_;
  std::deque<AudioRecord> audioQueue_;

  std::mutex levelMutex_;
  std::deque<LevelRecord> levelQueue_;
  LevelRecord reading_;
  LevelMeter meter_;

  Event::Subscriptions subscriptions_;  // last: it goes first, before what it calls into
};

}  // namespace Render
