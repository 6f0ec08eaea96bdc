// The player's sound output on SDL2 audio: float stereo at the scene's rate, fed from our
// own queue of buffers by SDL's callback, so the number of buffers not yet played to
// their end is known exactly. The device is opened at the first createPlayer and kept
// between runs; with no driver or device the player runs silently. Main thread; the
// callback runs on SDL's thread and shares the queue under a mutex.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <vector>

#include "render/AudioOutputDevice.h"

namespace Platform {

class AudioOutputService final : public Render::AudioOutputDevice {
 public:
  // Sample frames of SDL's own buffer: 10 ms at 48 kHz.
  static constexpr std::uint16_t kDeviceSamples = 480;

  AudioOutputService() = default;
  // Stops, drops the queue and closes the device.
  ~AudioOutputService() override;
  AudioOutputService(const AudioOutputService&) = delete;
  AudioOutputService& operator=(const AudioOutputService&) = delete;

  bool createPlayer(std::uint32_t sampleRate) override;
  bool exists() const override { return device_ != 0; }
  void play() override;
  void stop() override;
  bool started() const override { return started_; }
  void setVolume(std::int32_t percent) override;
  void submitBuffer(std::vector<std::byte> buffer) override;
  std::uint32_t reap() override;
  std::uint64_t submittedBytes() const override;
  void clearBuffer() override;
  // Closes the device; the next createPlayer opens it again.
  void release();

  // Sample frames handed to the device since it was opened, silence included.
  std::uint64_t playedFrames() const noexcept { return playedFrames_.load(); }
  // Sample frames the device asked for while started and the queue had none.
  std::uint64_t missingFrames() const noexcept { return missingFrames_.load(); }

 private:
  static void feed(void* self, std::uint8_t* stream, int length);
  void fill(float* out, std::size_t frames);

  std::uint32_t device_ = 0;  // SDL_AudioDeviceID; 0 is none
  std::uint32_t sampleRate_ = 0;
  bool subsystem_ = false;
  bool started_ = false;
  std::atomic<float> volume_{1.0f};
  std::atomic<std::uint64_t> playedFrames_{0};
  std::atomic<std::uint64_t> missingFrames_{0};
  mutable std::mutex mutex_;
  std::deque<std::vector<std::byte>> queue_;
  std::size_t frontOffset_ = 0;  // bytes of the front buffer already played
  std::uint64_t queuedBytes_ = 0;
};

}  // namespace Platform
