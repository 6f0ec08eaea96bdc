#include "media/audio/WaveformBuffer.h"

#include <cstring>

#include "media/audio/AudioBuffer.h"

namespace Media {

namespace {

// Both start at 0, so a column that never crosses zero still reaches to the middle.
struct Extremes {
  float low = 0.0f;
  float high = 0.0f;
};

constexpr std::size_t kLanes = 8;

// Eight lanes over whole groups of eight, then the rest one by one: the compiler
// vectorises the lanes, not a single running minimum. The comparisons are written so
// that vector min and max instructions do exactly what they say, with no fast-math, and
// so that a NaN sample is passed over.
void widen(Extremes& extremes, const float* samples, std::size_t begin, std::size_t end) noexcept {
  float low[kLanes];
  float high[kLanes];
  for (std::size_t j = 0; j < kLanes; ++j) {
    low[j] = extremes.low;
    high[j] = extremes.high;
  }
  std::size_t i = begin;
  for (; i + kLanes <= end; i += kLanes) {
    for (std::size_t j = 0; j < kLanes; ++j) {
      low[j] = samples[i + j] < low[j] ? samples[i + j] : low[j];
      high[j] = samples[i + j] > high[j] ? samples[i + j] : high[j];
    }
  }
  for (; i < end; ++i) {
    low[0] = samples[i] < low[0] ? samples[i] : low[0];
    high[0] = samples[i] > high[0] ? samples[i] : high[0];
  }
  for (std::size_t j = 1; j < kLanes; ++j) {
    low[0] = low[j] < low[0] ? low[j] : low[0];
    high[0] = high[j] > high[0] ? high[j] : high[0];
  }
  extremes = {low[0], high[0]};
}

// trunc((value + 1.0) × 128.0) in double, clamped to 0 .. 255: +1.0 lands on 256 and is
// clamped to 255, and a value a hair below zero still gives 127.
std::uint8_t level(float value) noexcept {
  const double scaled = (static_cast<double>(value) + 1.0) * 128.0;
  if (!(scaled >= 0.0)) return 0;
  if (scaled >= 255.0) return 255;
  return static_cast<std::uint8_t>(scaled);
}

}  // namespace

void WaveformBuffer::writeBlock(std::int32_t block, const AudioBuffer& audio) noexcept {
  if (block < 0) return;
  const std::size_t first = static_cast<std::size_t>(block) * kBytesPerBlock;
  if (data_.size() < first + kBytesPerBlock) return;
  std::uint8_t* out = data_.data() + first;
  if (audio.empty()) {
    std::memset(out, 0, kBytesPerBlock);
    return;
  }
  const std::uint64_t count = audio.sampleCount();
  const float* left = audio.channelData(0);
  const float* right = audio.channelData(1);
  std::size_t begin = 0;
  for (std::uint32_t column = 0; column < kColumnsPerBlock; ++column) {
    const auto end = static_cast<std::size_t>((column + 1) * count / kColumnsPerBlock);
    Extremes extremes;
    widen(extremes, left, begin, end);
    if (right != left) widen(extremes, right, begin, end);
    out[2 * column] = level(extremes.low);
    out[2 * column + 1] = level(extremes.high);
    begin = end;
  }
}

}  // namespace Media
