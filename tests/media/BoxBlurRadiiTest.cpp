#include <gtest/gtest.h>

#include "media/blur/BoxBlur.h"

namespace Media {
namespace {

void expectRadii(std::int32_t radius, double aspect, std::int32_t x, std::int32_t y) {
  const BlurRadii radii = blurRadii(radius, aspect);
  EXPECT_EQ(radii.x, x) << "radius " << radius << ", aspect " << aspect;
  EXPECT_EQ(radii.y, y) << "radius " << radius << ", aspect " << aspect;
}

TEST(BoxBlurRadiiTest, AspectShortensOneAxisByTruncation) {
  expectRadii(5, 0.0, 5, 5);
  // 縦横比 100 keeps x at the radius and leaves y none: the blur runs along x alone.
  expectRadii(5, 1.0, 5, 0);
  expectRadii(5, -1.0, 0, 5);
  // 2.5 and 7.5 truncate, on either side.
  expectRadii(5, 0.5, 5, 2);
  expectRadii(15, -0.5, 7, 15);
  // 縦横比 7 at 1000: (1 - 0.07) * 1000 comes out a hair below 930 in binary.
  expectRadii(1000, 7 * 0.01, 1000, 930);
  expectRadii(100, -57 * 0.01, 43, 100);
  expectRadii(-3, 0.0, 0, 0);
}

TEST(BoxBlurRadiiTest, ComputeFormFromASummedRadiusOf200) {
  EXPECT_EQ(blurFormFor({100, 99}), BlurForm::Pixel);
  EXPECT_EQ(blurFormFor({100, 100}), BlurForm::Compute);
  EXPECT_EQ(blurFormFor({200, 0}), BlurForm::Compute);
}

}  // namespace
}  // namespace Media
