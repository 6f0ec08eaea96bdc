#include <gtest/gtest.h>

#include <memory>

#include "effect/filter/BokashiFilter.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemNumber.h"
#include "media/ResourceBuffer.h"
#include "media/reference/BoxBlurReference.h"
#include "media/reference/FramePassReference.h"
#include "render/ObjectContext.h"
#include "DeviceGpu.h"

// ぼかし on the GPU: how its items choose the blur, and the exponential detour of
// 光の強さ against the frame passes' and the blur's CPU references.

namespace Effect {
namespace {

using Media::PassImage;
using MediaTest::expectImageNear;
using MediaTest::onGpu;
using MediaTest::readImage;
using MediaTest::testImage;
using MediaTest::upload;

PassImage toHalf(PassImage image) {
  for (float& value : image.pixels) value = static_cast<float>(static_cast<_Float16>(value));
  return image;
}

class BokashiFilterGpuTest : public ::testing::Test {
 protected:
  void SetUp() override { MEDIA_REQUIRE_GPU(); }
  // The filter's shared blur holds GPU objects, which go on the GPU thread.
  void TearDown() override {
    onGpu([&] { filter.reset(); });
  }

  PassImage apply(const PassImage& image, const BokashiFilter::Settings& settings) {
    PassImage out;
    onGpu([&] { out = readImage(*filter->apply(nullptr, upload(image), settings)); });
    return out;
  }

  std::unique_ptr<BokashiFilter> filter = std::make_unique<BokashiFilter>();
};

TEST_F(BokashiFilterGpuTest, SizeGrowsByTheBlurUnlessFixed) {
  const PassImage image = testImage(100, 100, 0);
  const PassImage grown = apply(image, {5, 0.0, 0, false});
  EXPECT_EQ(grown.width, 110u);
  EXPECT_EQ(grown.height, 110u);
  expectImageNear(grown.pixels, Media::blurReference(image, 5, 0.0, Media::BlurMode::Grow, true), 1e-3f);

  const PassImage fixed = apply(image, {5, 0.0, 0, true});
  EXPECT_EQ(fixed.width, 100u);
  EXPECT_EQ(fixed.height, 100u);
  expectImageNear(fixed.pixels, Media::blurReference(image, 5, 0.0, Media::BlurMode::KeepClamped, true), 1e-3f);
}

// The items as filterVideo reads them: 範囲 rounded, 縦横比 in hundredths.
TEST_F(BokashiFilterGpuTest, FilterVideoReadsTheItems) {
  filter->item<EffectItemNumber>(L"範囲").setValue(0, 3.4);
  filter->item<EffectItemNumber>(L"縦横比").setValue(0, 100);
  Render::ObjectContext context;
  std::uint32_t width = 0, height = 0;
  onGpu([&] {
    std::unique_ptr<Media::ResourceBuffer> out = filter->filterVideo(context, upload(testImage(10, 8, 1)));
    width = out->width();
    height = out->height();
  });
  EXPECT_EQ(width, 16u);
  EXPECT_EQ(height, 8u);

  filter->item<EffectItemCheck>(L"サイズ固定").setValue(true);
  onGpu([&] {
    std::unique_ptr<Media::ResourceBuffer> out = filter->filterVideo(context, upload(testImage(10, 8, 1)));
    width = out->width();
    height = out->height();
  });
  EXPECT_EQ(width, 10u);
  EXPECT_EQ(height, 8u);
}

// 光の強さ 10: pass 21 with base 2.5, the blur, pass 22 with 1 / 2.5; each step stored
// in half precision as on the GPU.
TEST_F(BokashiFilterGpuTest, LightBlursThroughTheExponentialDetour) {
  const PassImage image = testImage(12, 9, 3);
  for (const bool fixedSize : {false, true}) {
    SCOPED_TRACE(fixedSize ? "fixed size" : "growing");
    const Media::BlurMode mode = fixedSize ? Media::BlurMode::KeepClamped : Media::BlurMode::Grow;
    const Media::ExpRemapConstants exp{2.5f};
    const Media::LogRemapConstants log{1.0f / 2.5f};
    const PassImage raised = toHalf(
        Media::framePassReference(Media::FramePass::ExpRemap, Media::constantBytes(exp), &image, nullptr,
                                  image.width, image.height)
            .color);
    const PassImage blurred = Media::blurReference(raised, 4, -0.5, mode, true);
    const PassImage expected = Media::framePassReference(Media::FramePass::LogRemap, Media::constantBytes(log),
                                                         &blurred, nullptr, blurred.width, blurred.height)
                                   .color;
    const PassImage actual = apply(image, {4, -0.5, 10, fixedSize});
    ASSERT_EQ(actual.width, expected.width);
    ASSERT_EQ(actual.height, expected.height);
    expectImageNear(actual.pixels, expected, 2e-3f);
  }
}

}  // namespace
}  // namespace Effect
