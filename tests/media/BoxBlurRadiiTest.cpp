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

TEST(BoxBlurRadiiTest, TheComputeFormTakesOverWhereTheDrawsGrowDearer) {
  // Draw passes of 1 ms + 0.1 ms a radius against compute passes of 3 ms: four passes
  // cross where 4 + 0.1 * sum = 12, at a summed radius of 80.
  const double crossing = blurFormCrossing(1.4, 4, 4.2, 32, 3.0);
  EXPECT_NEAR(crossing, 80.0, 1e-9);
  EXPECT_EQ(blurFormFor({40, 39}, crossing), BlurForm::Pixel);
  EXPECT_EQ(blurFormFor({40, 40}, crossing), BlurForm::Compute);
  // Compute cheaper than a draw of radius 0: compute always; draws that do not grow
  // dearer and are cheaper: draws always.
  EXPECT_EQ(blurFormCrossing(2.0, 4, 3.0, 32, 1.0), 0.0);
  EXPECT_EQ(blurFormFor({0, 1}, blurFormCrossing(1.0, 4, 1.0, 32, 2.0)), BlurForm::Pixel);
  EXPECT_EQ(blurFormFor({5000, 5000}, blurFormCrossing(1.0, 4, 1.0, 32, 2.0)), BlurForm::Pixel);
}

}  // namespace
}  // namespace Media
