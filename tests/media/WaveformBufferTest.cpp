// The waveform's columns from one-second blocks: which samples a column holds, the byte
// scale at its ends, and the blocks that write nothing or zeroes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "media/audio/AudioBuffer.h"
#include "media/audio/WaveformBuffer.h"

namespace {

using Media::AudioBuffer;
using Media::WaveformBuffer;

AudioBuffer silence(std::uint32_t sampleCount, std::uint32_t channels) {
  AudioBuffer buffer(sampleCount, channels);
  buffer.clear();
  return buffer;
}

// (minimum, maximum) of a column of block 0.
std::pair<int, int> column(const WaveformBuffer& waveform, std::size_t column) {
  return {waveform.data()[2 * column], waveform.data()[2 * column + 1]};
}

TEST(WaveformBuffer, ColumnsHoldTheirSamplesOnTheByteScale) {
  WaveformBuffer waveform(WaveformBuffer::kBytesPerBlock);
  // 130 samples: column k ends at (k + 1) × 130 / 128, so column 63 holds samples 63 and
  // 64, column 64 only 65. Both channels count, and every column reaches the middle.
  AudioBuffer block = silence(130, 2);
  block.channelData(0)[64] = -1.0f;
  block.channelData(1)[63] = 1.0f;       // 256, clamped
  block.channelData(0)[65] = -1e-9f;     // 127 in double; float would give 128
  block.channelData(1)[65] = 0.99f;      // trunc(1.99 × 128)
  block.channelData(0)[0] = std::nanf("");  // passed over
  block.channelData(1)[129] = -3.0f;
  waveform.writeBlock(0, block);
  EXPECT_EQ(column(waveform, 0), std::pair(128, 128));
  EXPECT_EQ(column(waveform, 63), std::pair(0, 255));
  EXPECT_EQ(column(waveform, 64), std::pair(127, 254));
  EXPECT_EQ(column(waveform, 127), std::pair(0, 128));

  // A full-scale 1 kHz sine at 48 kHz has samples on its peaks in every column.
  AudioBuffer sine(48000, 1);
  for (std::uint32_t i = 0; i < 48000; ++i) {
    sine.channelData(0)[i] = static_cast<float>(std::sin(2 * std::numbers::pi * 1000 * i / 48000.0));
  }
  waveform.writeBlock(0, sine);
  EXPECT_EQ(std::count(waveform.data().begin(), waveform.data().end(), 0), 128);
  EXPECT_EQ(std::count(waveform.data().begin(), waveform.data().end(), 255), 128);
}

TEST(WaveformBuffer, BlocksPastTheTableWriteNothingAndEmptyBlocksZeroTheirColumns) {
  WaveformBuffer waveform(WaveformBuffer::kBytesPerBlock + 100);
  waveform.writeBlock(0, silence(3, 2));  // fewer samples than columns: all silence
  EXPECT_EQ(std::count(waveform.data().begin(), waveform.data().end(), 128), 256);
  waveform.writeBlock(1, silence(128, 2));
  waveform.writeBlock(-1, silence(128, 2));
  EXPECT_EQ(std::count(waveform.data().begin(), waveform.data().end(), 128), 256);
  waveform.writeBlock(0, AudioBuffer());
  EXPECT_EQ(std::count(waveform.data().begin(), waveform.data().end(), 0), 356);
}

}  // namespace
