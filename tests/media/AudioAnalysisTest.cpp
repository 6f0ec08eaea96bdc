// The frequency analyses of a buffer: tones at a bin's exact frequency, where the
// unwindowed FFT leaks nothing, so magnitudes and band levels can be worked by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

#include "media/audio/AudioBuffer.h"

namespace {

using Media::AudioBuffer;

// amplitude × cos at the frequency of `bin` of a 2048-point frame, sample n.
float tone(double amplitude, double bin, std::uint32_t n) {
  return static_cast<float>(amplitude * std::cos(2.0 * std::numbers::pi * bin * n / 2048.0));
}

TEST(AudioAnalysis, EmptyAndSilentBuffersGiveZerosOfTheLengthAsked) {
  const AudioBuffer empty;
  EXPECT_EQ(empty.fourier(), std::vector<float>(1024, 0.0f));
  EXPECT_EQ(empty.spectrum(100), std::vector<float>(100, 0.0f));
  EXPECT_EQ(empty.spectrum(5000), std::vector<float>(1024, 0.0f));  // at most 1024 bands
  EXPECT_TRUE(empty.spectrum(0).empty());

  AudioBuffer silence(3000, 2);
  silence.clear();
  EXPECT_EQ(silence.fourier(), std::vector<float>(1024, 0.0f));
  EXPECT_EQ(silence.spectrum(512), std::vector<float>(512, 0.0f));
}

TEST(AudioAnalysis, FourierIsTheLastFrameOfTheMonoMixAndWrapsToTheStart) {
  // Magnitude 1024 × amplitude at the tone's bin, × 48.
  AudioBuffer buffer(2048, 2);
  for (std::uint32_t n = 0; n < 2048; ++n) {
    buffer.channelData(0)[n] = tone(0.5, 64, n);
    buffer.channelData(1)[n] = 0.0f;
  }
  std::vector<float> bins = buffer.fourier();
  EXPECT_NEAR(bins[64], 0.5 * 1024 * 48, 0.1);
  EXPECT_NEAR(bins[63] + bins[65] + bins[0], 0.0, 0.1);

  // A mono buffer counts twice in the mono mix: 49152, clamped.
  AudioBuffer mono(2048, 1);
  for (std::uint32_t n = 0; n < 2048; ++n) mono.channelData(0)[n] = tone(0.5, 64, n);
  EXPECT_EQ(mono.fourier()[64], 32767.0f);

  // 3072 samples: bin 64 for the first frame, bin 128 for the last 1024 samples. The last
  // frame holds those and then samples 0 .. 1023 again, half of each tone: 512 × 0.5 each.
  AudioBuffer twoFrames(3072, 2);
  for (std::uint32_t n = 0; n < 3072; ++n) {
    twoFrames.channelData(0)[n] = tone(0.5, n < 2048 ? 64 : 128, n);
    twoFrames.channelData(1)[n] = 0.0f;
  }
  bins = twoFrames.fourier();
  EXPECT_NEAR(bins[64], 0.5 * 512 * 48, 0.1);
  EXPECT_NEAR(bins[128], 0.5 * 512 * 48, 0.1);
}

TEST(AudioAnalysis, SpectrumPeaksOverChannelsAndSmoothsIntoNeighbouringBands) {
  // Bin 512 lies whole inside band 459 (bins 510.55 .. 517.29), bin 768 inside band 490
  // (767.14 .. 777.28). Left: bin 512 at 0.5. Right: bin 512 at 0.25, below the left's
  // peak, and bin 768 at 0.6. Two frames of each.
  AudioBuffer buffer(4096, 2);
  for (std::uint32_t n = 0; n < 4096; ++n) {
    buffer.channelData(0)[n] = tone(0.5, 512, n);
    buffer.channelData(1)[n] = tone(0.25, 512, n) + tone(0.6, 768, n);
  }
  // A band is sqrt(power) × 48 − 64. The first smoothing halves a lone band and gives a
  // quarter to each neighbour; 512 bands then take weights 5, 4, 3, 2, 1 (of 25).
  constexpr double kLow = 512 * 48 - 64;
  constexpr double kHigh = 0.6 * 1024 * 48 - 64;
  const double pattern[] = {0.18, 0.16, 0.12, 0.08, 0.04, 0.01};
  std::vector<double> expected(512, 0.0);
  for (int d = 0; d < 6; ++d) {
    expected[459 + d] = expected[459 - d] = pattern[d] * kLow;
    expected[490 + d] = expected[490 - d] = pattern[d] * kHigh;
  }
  const std::vector<float> bands = buffer.spectrum(512);
  ASSERT_EQ(bands.size(), 512u);
  for (std::size_t k = 0; k < 512; ++k) EXPECT_NEAR(bands[k], expected[k], 0.1) << "band " << k;

  // 64 targets take the peak of the bands nearest them (459 and its left neighbour to 57,
  // 460 to 58, 489 .. 491 to 61), then weights 512 and 128 each side.
  expected.assign(64, 0.0);
  expected[56] = kLow / 12, expected[57] = kLow * 3 / 8, expected[58] = kLow / 4, expected[59] = kLow / 24;
  expected[60] = expected[62] = kHigh / 12, expected[61] = kHigh / 3;
  const std::vector<float> targets = buffer.spectrum(64);
  ASSERT_EQ(targets.size(), 64u);
  for (std::size_t k = 0; k < 64; ++k) EXPECT_NEAR(targets[k], expected[k], 0.1) << "target " << k;

  // Below 16 targets there is no final smoothing. Band 490 rounds to target 8, past the
  // last of eight, and is not shown.
  std::vector<float> eight = buffer.spectrum(8);
  ASSERT_EQ(eight.size(), 8u);
  EXPECT_NEAR(eight[7], kLow / 2, 0.1);
  eight[7] = 0.0f;
  EXPECT_EQ(eight, std::vector<float>(8, 0.0f));

  // 1024 interpolates between bands (918 is band 459), then smooths with weights 9 .. 1.
  const std::vector<float> wide = buffer.spectrum(5000);
  ASSERT_EQ(wide.size(), 1024u);
  EXPECT_NEAR(wide[918], kLow * (9 * 0.5 + 2 * (8 * 0.375 + 7 * 0.25 + 6 * 0.125)) / 81, 0.1);
}

TEST(AudioAnalysis, SpectrumFillsASingleBinDipInTheLowBands) {
  // Bins 100 and 102 at equal level: the empty bin between them is raised to their level,
  // which is what a third tone at bin 101 gives.
  AudioBuffer gap(2048, 1);
  AudioBuffer filled(2048, 1);
  for (std::uint32_t n = 0; n < 2048; ++n) {
    gap.channelData(0)[n] = tone(0.25, 100, n) + tone(0.25, 102, n);
    filled.channelData(0)[n] = gap.channelData(0)[n] + tone(0.25, 101, n);
  }
  const std::vector<float> expected = filled.spectrum(512);
  const std::vector<float> bands = gap.spectrum(512);
  for (std::size_t k = 0; k < 512; ++k) EXPECT_NEAR(bands[k], expected[k], 0.5) << "band " << k;
}

}  // namespace
