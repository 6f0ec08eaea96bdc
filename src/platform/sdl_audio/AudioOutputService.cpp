#include "platform/sdl_audio/AudioOutputService.h"

#include <SDL.h>

#include <algorithm>
#include <cstring>

#include "system/Log.h"

namespace Platform {

namespace {

constexpr std::size_t kFrameBytes = 2 * sizeof(float);

}  // namespace

AudioOutputService::~AudioOutputService() {
  release();
  if (subsystem_) SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

bool AudioOutputService::createPlayer(std::uint32_t sampleRate) {
  if (device_ != 0 && sampleRate_ == sampleRate) return true;
  release();
  if (!subsystem_) {
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
      System::Log::warn("Platform::AudioOutputService::createPlayer", "audio player initialize failed.\n%s",
                        SDL_GetError());
      return false;
    }
    subsystem_ = true;
  }
  SDL_AudioSpec wanted{};
  wanted.freq = static_cast<int>(sampleRate);
  wanted.format = AUDIO_F32SYS;
  wanted.channels = 2;
  wanted.samples = kDeviceSamples;
  wanted.callback = &AudioOutputService::feed;
  wanted.userdata = this;
  SDL_AudioSpec obtained{};
  // No changes allowed: SDL converts to what the device takes, so the callback always
  // writes float stereo at the scene's rate.
  device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, &obtained, 0);
  if (device_ == 0) {
    System::Log::warn("Platform::AudioOutputService::createPlayer", "audio player initialize failed.\n%s",
                      SDL_GetError());
    return false;
  }
  sampleRate_ = sampleRate;
  playedFrames_ = 0;
  missingFrames_ = 0;
  return true;
}

void AudioOutputService::release() {
  if (device_ == 0) return;
  stop();
  SDL_CloseAudioDevice(device_);
  device_ = 0;
  sampleRate_ = 0;
  clearBuffer();
}

void AudioOutputService::play() {
  if (device_ == 0 || started_) return;
  started_ = true;
  System::Log::info("Platform::AudioOutputService::play", "start audio player");
  SDL_PauseAudioDevice(device_, 0);
}

void AudioOutputService::stop() {
  if (!started_) return;
  started_ = false;
  System::Log::info("Platform::AudioOutputService::stop", "stop audio player");
  SDL_PauseAudioDevice(device_, 1);
}

void AudioOutputService::setVolume(std::int32_t percent) {
  volume_ = static_cast<float>(std::clamp(percent, 0, 100)) / 100.0f;
}

void AudioOutputService::submitBuffer(std::vector<std::byte> buffer) {
  if (device_ == 0 || buffer.empty()) return;
  std::lock_guard lock(mutex_);
  queuedBytes_ += buffer.size();
  queue_.push_back(std::move(buffer));
}

std::uint32_t AudioOutputService::reap() {
  // The callback drops each buffer as it plays its last byte, so the queue holds exactly
  // those still to play.
  std::lock_guard lock(mutex_);
  return static_cast<std::uint32_t>(queue_.size());
}

std::uint64_t AudioOutputService::submittedBytes() const {
  std::lock_guard lock(mutex_);
  return queuedBytes_;
}

void AudioOutputService::clearBuffer() {
  std::deque<std::vector<std::byte>> dropped;
  {
    std::lock_guard lock(mutex_);
    dropped.swap(queue_);
    frontOffset_ = 0;
    queuedBytes_ = 0;
  }
}

void AudioOutputService::feed(void* self, std::uint8_t* stream, int length) {
  static_cast<AudioOutputService*>(self)->fill(reinterpret_cast<float*>(stream),
                                               static_cast<std::size_t>(length) / kFrameBytes);
}

void AudioOutputService::fill(float* out, std::size_t frames) {
  const float volume = volume_;
  std::size_t written = 0;
  {
    std::lock_guard lock(mutex_);
    while (written < frames && !queue_.empty()) {
      const std::vector<std::byte>& front = queue_.front();
      const std::size_t available = (front.size() - frontOffset_) / kFrameBytes;
      const std::size_t take = std::min(available, frames - written);
      std::memcpy(out + written * 2, front.data() + frontOffset_, take * kFrameBytes);
      written += take;
      frontOffset_ += take * kFrameBytes;
      if (front.size() - frontOffset_ < kFrameBytes) {
        queuedBytes_ -= front.size();
        queue_.pop_front();
        frontOffset_ = 0;
      }
    }
  }
  for (std::size_t i = 0; i < written * 2; ++i) out[i] *= volume;
  if (written < frames) {
    std::memset(out + written * 2, 0, (frames - written) * kFrameBytes);
    missingFrames_ += frames - written;
  }
  playedFrames_ += frames;
}

}  // namespace Platform
