// The bars of a sound on an 8x8 image: a wave up and down from the middle line, cells
// with gaps across and up, a spectrum from the bottom and mirrored; and the reduction of
// a sound to values that keeps its peaks.
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <vector>

#include "DeviceGpu.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/wave/WaveImage.h"

namespace Media {
namespace {

using MediaTest::gpu;
using MediaTest::onGpu;

constexpr std::uint32_t kSide = 8;

// The lit pixels of a draw, as y * 8 + x; every lit pixel must be exactly the colour.
std::set<int> lit(WaveImage& wave, const std::vector<float>& values, WaveLook look) {
  look.width = look.height = kSide;
  look.colour = {0.0f, 0.5f, 0.0f, 0.5f};
  PassImage image;
  onGpu([&] { image = MediaTest::readImage(*wave.draw(values, look)); });
  std::set<int> on;
  for (std::uint32_t y = 0; y < kSide; ++y) {
    for (std::uint32_t x = 0; x < kSide; ++x) {
      const auto pixel = image.at(x, y);
      if (pixel[3] == 0.0f) continue;
      EXPECT_EQ(pixel[1], 0.5f);
      EXPECT_EQ(pixel[3], 0.5f);
      on.insert(static_cast<int>(y * kSide + x));
    }
  }
  return on;
}

std::set<int> rows(std::initializer_list<int> ys, std::initializer_list<int> xs = {0, 1, 2, 3, 4, 5, 6, 7}) {
  std::set<int> on;
  for (const int y : ys) {
    for (const int x : xs) on.insert(y * 8 + x);
  }
  return on;
}

class WaveImageGpuTest : public ::testing::Test {
 protected:
  void SetUp() override {
    MEDIA_REQUIRE_GPU();
    wave = std::make_unique<WaveImage>(gpu());
  }
  void TearDown() override {
    if (wave) onGpu([&] { wave.reset(); });
  }
  std::unique_ptr<WaveImage> wave;
};

TEST_F(WaveImageGpuTest, AWaveRisesForPositiveAndFallsForNegativeSamples) {
  EXPECT_EQ(lit(*wave, {0.5f}, {}), rows({2, 3}));  // half of the upper half
  EXPECT_EQ(lit(*wave, {-0.25f}, {}), rows({4}));
  WaveLook half;
  half.volume = 0.5f;
  EXPECT_EQ(lit(*wave, {0.5f}, half), rows({3}));
  // Two columns with half of each cell filled: one full up, one full down.
  WaveLook cells;
  cells.columns = 2;
  cells.fillX = 0.5f;
  EXPECT_EQ(lit(*wave, {1.0f, -1.0f}, cells), [] {
    std::set<int> on = rows({0, 1, 2, 3}, {1, 2});
    for (const int p : rows({4, 5, 6, 7}, {5, 6})) on.insert(p);
    return on;
  }());
}

TEST_F(WaveImageGpuTest, SpectraStandOnTheBottomOrMirrorAndKeepTheirGaps) {
  WaveLook bottom;
  bottom.style = WaveStyle::Spectrum;
  EXPECT_EQ(lit(*wave, {0.25f}, bottom), rows({6, 7}));
  WaveLook mirrored;
  mirrored.style = WaveStyle::MirrorSpectrum;
  EXPECT_EQ(lit(*wave, {0.5f}, mirrored), rows({2, 3, 4, 5}));
  // Two cells up, each half filled: the middle two rows of each.
  WaveLook stacked = bottom;
  stacked.rows = 2;
  stacked.fillY = 0.5f;
  EXPECT_EQ(lit(*wave, {1.0f}, stacked), rows({1, 2, 5, 6}));
  EXPECT_TRUE(lit(*wave, {}, bottom).empty());
}

TEST(WaveValues, TheMeanOfBothSidesKeepsItsPeaks) {
  AudioBuffer sound(4, 2);
  const float left[] = {0.1f, -0.8f, 0.2f, 0.0f};
  const float right[] = {0.1f, -0.6f, 0.4f, 0.0f};
  std::copy(std::begin(left), std::end(left), sound.channelData(0));
  std::copy(std::begin(right), std::end(right), sound.channelData(1));
  const std::vector<float> values = waveformValues(sound, 2);
  ASSERT_EQ(values.size(), 2u);
  EXPECT_FLOAT_EQ(values[0], -0.7f);
  EXPECT_FLOAT_EQ(values[1], 0.3f);
  EXPECT_EQ(waveformValues(sound, 100).size(), 4u);
}

}  // namespace
}  // namespace Media
