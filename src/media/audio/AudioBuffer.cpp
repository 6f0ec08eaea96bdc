#include "media/audio/AudioBuffer.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace Media {

namespace {

constexpr std::size_t kAlignment = 32;
constexpr std::size_t kGroup = 8;  // samples of one 32-byte step

std::size_t paddedSamples(std::uint32_t sampleCount) noexcept {
  return (std::size_t{sampleCount} + kGroup - 1) / kGroup * kGroup;
}

}  // namespace

void AudioBuffer::AlignedDelete::operator()(float* p) const noexcept {
  ::operator delete[](p, std::align_val_t{kAlignment});
}

AudioBuffer::Channel AudioBuffer::makeChannel(std::uint32_t sampleCount) {
  const std::size_t samples = std::max<std::size_t>(paddedSamples(sampleCount), kGroup);
  Channel channel(static_cast<float*>(::operator new[](samples * sizeof(float), std::align_val_t{kAlignment})));
  // The padding stays silent, whatever loop of eight reads it.
  std::memset(channel.get() + sampleCount, 0, (samples - sampleCount) * sizeof(float));
  return channel;
}

void AudioBuffer::allocate(std::uint32_t sampleCount, std::uint32_t channels) {
  left_ = makeChannel(sampleCount);
  right_ = channels == 2 ? makeChannel(sampleCount) : nullptr;
  channels_ = channels == 2 ? 2 : 1;
  sampleCount_ = sampleCount;
}

void AudioBuffer::clear() noexcept {
  if (left_) std::memset(left_.get(), 0, std::size_t{sampleCount_} * sizeof(float));
  if (right_) std::memset(right_.get(), 0, std::size_t{sampleCount_} * sizeof(float));
}

}  // namespace Media
