// Sound inside the program: planar 32-bit float, 1.0 full scale, one or two channels.
// A mono buffer answers for its second channel with its first, so code that reads treats
// every buffer as stereo. Channels are 32-byte aligned and padded to whole groups of
// eight samples; padding is never signal. Owned by one task at a time, or read-only once
// shared.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Media {

class AudioBuffer {
 public:
  AudioBuffer() = default;
  AudioBuffer(std::uint32_t sampleCount, std::uint32_t channels) { allocate(sampleCount, channels); }

  // Sizes the channels; a channel count other than 2 keeps one channel. Samples are not
  // cleared.
  void allocate(std::uint32_t sampleCount, std::uint32_t channels);
  void clear() noexcept;

  std::uint32_t channels() const noexcept { return channels_; }
  std::uint32_t sampleCount() const noexcept { return sampleCount_; }
  bool empty() const noexcept { return sampleCount_ == 0; }
  // Channel 0 is the left; channel 1 of a mono buffer is the left as well.
  float* channelData(std::uint32_t index) noexcept { return index == 0 || !right_ ? left_.get() : right_.get(); }
  const float* channelData(std::uint32_t index) const noexcept {
    return index == 0 || !right_ ? left_.get() : right_.get();
  }

 private:
  struct AlignedDelete {
    void operator()(float* p) const noexcept;
  };
  using Channel = std::unique_ptr<float[], AlignedDelete>;
  static Channel makeChannel(std::uint32_t sampleCount);

  Channel left_;
  Channel right_;
  std::uint32_t channels_ = 0;
  std::uint32_t sampleCount_ = 0;
};

}  // namespace Media
