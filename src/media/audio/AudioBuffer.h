// Sound inside the program: planar 32-bit float, 1.0 full scale, one or two channels.
// A mono buffer answers for its second channel with its first, so code that reads treats
// every buffer as stereo. Channels are 32-byte aligned and padded to whole groups of
// eight samples; padding is never signal. Owned by one task at a time, or read-only once
// shared.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Media {

struct RawAudioBuffer;

class AudioBuffer {
 public:
  AudioBuffer() = default;
  AudioBuffer(std::uint32_t sampleCount, std::uint32_t channels) { allocate(sampleCount, channels); }

  // Sizes the channels; a channel count other than 2 keeps one channel. Samples are not
  // cleared.
  void allocate(std::uint32_t sampleCount, std::uint32_t channels);
  // Zeroes both channels, padding included.
  void clear() noexcept;
  // Zeroes from sample `offset` to the end; nothing when offset ≥ sampleCount.
  void clearFrom(std::uint32_t offset) noexcept;
  // A buffer of the same size and channels holding a copy of the samples.
  AudioBuffer clone() const;

  // Copies samples srcStart .. srcEnd − 1 of both channels of `src` to `dstOffset`, as far
  // as this buffer and `src` reach, and returns dstOffset + the count copied. A mono
  // buffer takes the first channel of a stereo source. `src` may be this buffer.
  std::uint32_t copyFrom(std::uint32_t dstOffset, const AudioBuffer& src, std::uint32_t srcStart,
                         std::uint32_t srcEnd) noexcept;

  // Interleaves into `raw` in the form its caller set: stereo PCM 16 (× 32768, rounded to
  // nearest, ties to even, clamped), stereo float, or mono float as left + right (so a
  // mono buffer comes out at twice its level). Sets raw.sampleCount, raw.blockBytes and
  // the bytes. Any other form throws System::NoteException "audio format not supported.";
  // an allocation failure propagates. `raw` is left as it was on a throw of the first kind.
  void convertTo(RawAudioBuffer& raw) const;

  // The frequency analyses behind obj.getaudio and the waveform effect. Both cut each
  // channel into frames of 2048 samples from its start, the last frame running on round
  // the start again, and take an unwindowed 2048-point FFT of each; bin n is
  // n × rate / 2048 Hz, and only bins 0 .. 1023 are used. Any thread may call them. An
  // empty buffer gives zeros; an allocation failure propagates.

  // The loudness of min(bandCount, 1024) bands, low to high, each in 0 .. 32767: the
  // channels' bins gathered into 512 bands, on a scale logarithmic below and widening
  // faster towards the top, peak over every frame of both channels, then smoothed and
  // resampled to the count asked for. bandCount 0 gives an empty vector.
  std::vector<float> spectrum(std::uint32_t bandCount) const;
  // 1024 magnitudes, bin by bin, × 48 and clamped to 32767, of the last frame of the
  // channels summed to mono by convertTo (so a mono buffer counts twice).
  std::vector<float> fourier() const;

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
  std::size_t paddedCount() const noexcept;

  Channel left_;
  Channel right_;
  std::uint32_t channels_ = 0;
  std::uint32_t sampleCount_ = 0;
};

}  // namespace Media
