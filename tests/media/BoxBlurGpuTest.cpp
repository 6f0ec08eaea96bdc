#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "media/ResourceBuffer.h"
#include "media/blur/BoxBlur.h"
#include "media/reference/BoxBlurReference.h"
#include "DeviceGpu.h"

// The blur in both forms and all three modes against the CPU reference, on RGBA16F
// images. The reference rounds each pass to half precision as the intermediates do, so
// what remains is the order of the sums and, in the compute form, the running sum's
// drift: 2e-3 relative plus 1e-3 absolute.

namespace Media {
namespace {

using MediaTest::expectImageNear;
using MediaTest::gpu;
using MediaTest::onGpu;
using MediaTest::readImage;
using MediaTest::testImage;
using MediaTest::upload;

constexpr float kAbsolute = 1e-3f;
constexpr BlurMode kModes[] = {BlurMode::Grow, BlurMode::KeepZero, BlurMode::KeepClamped};
constexpr BlurForm kForms[] = {BlurForm::Pixel, BlurForm::Compute};

std::string describe(BlurMode mode, BlurForm form, std::int32_t radius, double aspect) {
  return "mode " + std::to_string(static_cast<int>(mode)) + (form == BlurForm::Pixel ? ", pixel" : ", compute") +
         ", radius " + std::to_string(radius) + ", aspect " + std::to_string(aspect);
}

// Blurs `image` on the GPU in `form` and holds the result to the reference.
void expectBlur(BoxBlur& blur, const PassImage& image, std::int32_t radius, double aspect, BlurMode mode,
                BlurForm form) {
  SCOPED_TRACE(describe(mode, form, radius, aspect));
  const PassImage expected = blurReference(image, radius, aspect, mode, true);
  PassImage actual;
  onGpu([&] {
    blur.forceForm(form);
    std::unique_ptr<ResourceBuffer> result = blur.blur(upload(image), radius, aspect, mode);
    actual = readImage(*result);
  });
  ASSERT_EQ(actual.width, expected.width);
  ASSERT_EQ(actual.height, expected.height);
  expectImageNear(actual.pixels, expected, kAbsolute);
}

class BoxBlurGpuTest : public ::testing::Test {
 protected:
  void SetUp() override {
    MEDIA_REQUIRE_GPU();
    blur = std::make_unique<BoxBlur>(gpu());
  }
  void TearDown() override {
    if (blur) onGpu([&] { blur.reset(); });
  }
  std::unique_ptr<BoxBlur> blur;
};

// Odd and even radii split unevenly (3 into 2 + 1) and evenly; aspect ±1 leaves one
// axis unblurred, 0.5 shortens y to a truncated half.
TEST_F(BoxBlurGpuTest, EveryModeAndFormMatchesTheReference) {
  const PassImage image = testImage(9, 6, 1);
  for (const BlurMode mode : kModes) {
    for (const BlurForm form : kForms) {
      for (const std::int32_t radius : {1, 2, 3, 4}) {
        for (const double aspect : {0.0, 1.0, -1.0, 0.5}) expectBlur(*blur, image, radius, aspect, mode, form);
      }
    }
  }
}

TEST_F(BoxBlurGpuTest, ImagesSmallerThanTheRadius) {
  const PassImage image = testImage(3, 2, 4);
  for (const BlurMode mode : kModes) {
    for (const BlurForm form : kForms) {
      expectBlur(*blur, image, 9, 0.0, mode, form);
      expectBlur(*blur, image, 1, 0.0, mode, form);
    }
  }
  // A single pixel clamped on every side stays as it was.
  const PassImage dot = testImage(1, 1, 3);
  expectBlur(*blur, dot, 6, 0.0, BlurMode::KeepClamped, BlurForm::Compute);
}

// Both forms must give the reference's pixels at large radii too, the image far smaller
// than the window, and so must the form the blur chooses by itself.
TEST_F(BoxBlurGpuTest, BothFormsAgreeAtLargeRadii) {
  const PassImage image = testImage(23, 17, 2);
  for (const BlurMode mode : kModes) {
    for (const BlurForm form : kForms) expectBlur(*blur, image, 101, 0.25, mode, form);
  }
  PassImage chosen;
  onGpu([&] {
    blur->forceForm(std::nullopt);
    chosen = readImage(*blur->blur(upload(image), 101, 0.0, BlurMode::KeepClamped));
  });
  expectImageNear(chosen.pixels, blurReference(image, 101, 0.0, BlurMode::KeepClamped, true), kAbsolute);
}

TEST_F(BoxBlurGpuTest, RadiusZeroHandsTheImageOnWithoutAPass) {
  onGpu([&] {
    std::unique_ptr<ResourceBuffer> image = upload(testImage(4, 3, 0));
    ResourceBuffer* given = image.get();
    image = blur->blur(std::move(image), 0, 0.0, BlurMode::Grow);
    EXPECT_EQ(image.get(), given);
    image = blur->boxBlur(std::move(image), 0);
    EXPECT_EQ(image.get(), given);
  });
}

// boxBlur is one y pass and one x pass of the full radius, growing; not the split blur.
TEST_F(BoxBlurGpuTest, BoxBlurIsOneFullPassPerAxis) {
  const PassImage image = testImage(7, 5, 5);
  const PassImage expected = boxPassReference(boxPassReference(image, BlurAxis::Y, 3, BlurMode::Grow, true),
                                              BlurAxis::X, 3, BlurMode::Grow, true);
  for (const BlurForm form : kForms) {
    PassImage actual;
    onGpu([&] {
      blur->forceForm(form);
      actual = readImage(*blur->boxBlur(upload(image), 3));
    });
    ASSERT_EQ(actual.width, 13u);
    ASSERT_EQ(actual.height, 11u);
    expectImageNear(actual.pixels, expected, kAbsolute);
  }
}

// A warm blur draws into images it kept from earlier ones: whatever they held must not
// show through, in either form, even when the radius and so the window changes.
TEST_F(BoxBlurGpuTest, KeptImagesLeaveNoTrace) {
  for (const BlurForm form : kForms) {
    for (const BlurMode mode : kModes) {
      expectBlur(*blur, testImage(8, 8, 7), 5, 0.0, mode, form);
      expectBlur(*blur, testImage(8, 8, 9), 2, 0.0, mode, form);
      expectBlur(*blur, testImage(8, 8, 11), 5, 0.0, mode, form);
    }
  }
}

}  // namespace
}  // namespace Media
