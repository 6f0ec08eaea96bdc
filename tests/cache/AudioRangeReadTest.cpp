// The read of a span of sound over blocks made here: one to one at the source's pace,
// interpolated when slower, averaged when faster, turned round backwards, and silent
// where a block is missing.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "cache/AudioRangeRead.h"
#include "media/audio/AudioBuffer.h"

namespace {

constexpr std::int64_t kRate = 8;  // samples in each one-second block

// Blocks 0 to `blocks` - 1 whose sample n (counted from the start) is n.
Cache::AudioBlockFetch counting(std::int64_t blocks) {
  return [blocks](std::int64_t block) -> std::shared_ptr<const Media::AudioBuffer> {
    if (block < 0 || block >= blocks) return nullptr;
    auto buffer = std::make_shared<Media::AudioBuffer>(kRate, 1);
    for (std::int64_t i = 0; i < kRate; ++i) buffer->channelData(0)[i] = static_cast<float>(block * kRate + i);
    return buffer;
  };
}

std::vector<float> read(std::int64_t position, std::int32_t count, double speed, std::int64_t blocks = 4,
                        double startSeconds = 0.0) {
  Media::AudioBuffer out(static_cast<std::uint32_t>(count), 2);
  const auto at = Cache::audioReadPosition(kRate, position, kRate, startSeconds, speed);
  Cache::readAudioSpan(out, kRate, kRate, at, counting(blocks));
  EXPECT_EQ(out.channelData(0)[0], out.channelData(1)[0]);  // mono feeds both sides
  return {out.channelData(1), out.channelData(1) + count};
}

TEST(AudioRangeRead, EqualRatesCopyAcrossBlocksAndBackwardsTurnsRound) {
  EXPECT_EQ(read(6, 4, 1.0), (std::vector<float>{6, 7, 8, 9}));
  EXPECT_EQ(read(6, 4, -1.0), (std::vector<float>{9, 8, 7, 6}));
  EXPECT_EQ(read(0, 3, 1.0, 4, 1.5), (std::vector<float>{12, 13, 14}));
}

TEST(AudioRangeRead, SlowerInterpolatesAndFasterAverages) {
  EXPECT_EQ(read(2, 4, 0.5), (std::vector<float>{1, 1.5f, 2, 2.5f}));
  EXPECT_EQ(read(1, 3, 2.0), (std::vector<float>{2.5f, 4.5f, 6.5f}));
  // One and a half samples an output: the middle sample is shared between two outputs.
  EXPECT_EQ(read(0, 2, 1.5), (std::vector<float>{(0 + 0.5f * 1) / 1.5f, (0.5f * 1 + 2) / 1.5f}));
}

TEST(AudioRangeRead, AMissingBlockEndsTheReadInSilence) {
  EXPECT_EQ(read(6, 4, 1.0, 1), (std::vector<float>{6, 7, 0, 0}));
  EXPECT_EQ(read(9, 2, 1.0, 1), (std::vector<float>{0, 0}));
  EXPECT_EQ(read(2, 2, 0.0), (std::vector<float>{0, 0}));
}

}  // namespace
