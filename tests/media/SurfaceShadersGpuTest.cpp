#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "media/ConstantBufferCommon.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/reference/BlendModeReference.h"
#include "media/surface/SurfaceConstants.h"
#include "media/surface/SurfaceShaders.h"
#include "DeviceGpu.h"

// The surface pairs on small odd-sized RGBA16F targets, against the CPU blend modes and
// hand-derived coverage and filter weights. Inputs are half-precision values already;
// tolerance 2e-3 relative plus 2e-4 absolute for the rounding of the result.

namespace Media {
namespace {

using MediaTest::expectImageNear;
using MediaTest::gpu;
using MediaTest::onGpu;
using MediaTest::readImage;
using MediaTest::testImage;
using MediaTest::upload;

// The default projection with focal length f for a w by h target after a translation
// by (dx, dy, f): a vertex (x, y, 0) lands at pixel (x + dx + w / 2, y + dy + h / 2).
// Row-vector matrix rows (2f/w, 0, 0, 0), (0, -2f/h, 0, 0), (0, 0, 0, 1),
// (2f dx/w, -2f dy/h, f/20, f), stored transposed.
SurfaceConstants placed(float w, float h, float dx, float dy, float alpha, std::int32_t blend) {
  constexpr float f = 1024.0f;
  return {{2 * f / w, 0, 0, 2 * f * dx / w, 0, -2 * f / h, 0, -2 * f * dy / h, 0, 0, 0, f / 20, 0, 0, 1, f},
          alpha, blend, {}, {}, 0.0f, {}};
}

Rgba sourceOver(const Rgba& s, const Rgba& d) {
  return {s[0] + d[0] * (1 - s[3]), s[1] + d[1] * (1 - s[3]), s[2] + d[2] * (1 - s[3]), s[3] + d[3] * (1 - s[3])};
}

// A w by h quad centred on the origin with texture coordinates 0 to 1.
VertexListQuadPosUv quad(float w, float h, float alphaFactor) {
  VertexListQuadPosUv list;
  for (const auto& [x, y] : {std::pair{0.0f, 0.0f}, {1.0f, 0.0f}, {1.0f, 1.0f}, {0.0f, 1.0f}}) {
    list.push({(x - 0.5f) * w, (y - 0.5f) * h, 0, x, y, alphaFactor, 0});
  }
  return list;
}

// Draws a quad of `texture` (one of `w` by `h` pixels placed by dx, dy) onto `frame`
// through a constant buffer, with a copy of the frame, and reads the target back.
PassImage drawQuad(const PassImage& frame, const PassImage& texture, float w, float h, float dx, float dy, float alpha,
                   std::int32_t blend, float alphaFactor) {
  PassImage result;
  onGpu([&] {
    SurfaceShaders shaders(gpu());
    auto target = upload(frame), frameCopy = upload(frame), image = upload(texture);
    ConstantBufferCommon constants(gpu());
    constants.create(placed(static_cast<float>(frame.width), static_cast<float>(frame.height), dx, dy, alpha, blend));
    shaders.drawTextured(*target, quad(w, h, alphaFactor), *image, constants, {frameCopy.get(), 1, 0});
    result = readImage(*target);
  });
  return result;
}

class SurfaceShadersGpuTest : public ::testing::Test {
 protected:
  void SetUp() override { MEDIA_REQUIRE_GPU(); }
};

// A 4 by 3 texture one texel a pixel, its centre placed at pixel (4, 3.5) of a 7 by 5
// frame: it covers x 2 to 5, y 2 to 4 and reads each texel as it is.
TEST_F(SurfaceShadersGpuTest, TexturedQuadComposesOverTheFrameByBlendMode) {
  struct Case {
    std::int32_t blend;
    float alpha, alphaFactor;
    std::int32_t expectedMode;  // 20 and up draw as 0
  };
  for (const Case& c : {Case{0, 1.0f, 1.0f, 0}, Case{3, 0.8f, 0.5f, 3}, Case{8, 0.6f, 1.0f, 8},
                        Case{5, 1.0f, 0.75f, 5}, Case{21, 0.7f, 1.0f, 0}}) {
    SCOPED_TRACE("blend " + std::to_string(c.blend));
    const PassImage frame = testImage(7, 5, 1);
    const PassImage texture = testImage(4, 3, 2);
    PassImage expected = frame;
    for (std::uint32_t i = 0; i < 12; ++i) {
      const std::uint32_t x = i % 4, y = i / 4;
      Rgba drawn;
      const Rgba under = frame.at(x + 2, y + 2);
      if (blendModeReference(c.expectedMode, c.alpha * c.alphaFactor, texture.at(x, y), under, drawn)) {
        expected.set(x + 2, y + 2, sourceOver(drawn, under));
      }
    }
    const PassImage actual = drawQuad(frame, texture, 4, 3, 0.5f, 1.0f, c.alpha, c.blend, c.alphaFactor);
    expectImageNear(actual.pixels, expected, 2e-4f);
  }
}

// An 18 by 12 texture on a 3 by 2 quad: a footprint of 6 texels, so 4 taps an axis at
// -2.25, -0.75, 0.75 and 2.25 texels from the pixel's centre. Bilinearly they weigh the
// six texels of the pixel's block 3, 2, 3, 3, 2, 3 sixteenths on each axis.
TEST_F(SurfaceShadersGpuTest, MinifiedTextureAveragesTapsOverTheFootprint) {
  constexpr float kWeights[6] = {3 / 16.0f, 2 / 16.0f, 3 / 16.0f, 3 / 16.0f, 2 / 16.0f, 3 / 16.0f};
  const PassImage texture = testImage(18, 12, 3);
  PassImage expected(5, 4);
  for (std::uint32_t p = 0; p < 6; ++p) {
    Rgba sum{};
    for (std::uint32_t t = 0; t < 36; ++t) {
      const Rgba texel = texture.at(p % 3 * 6 + t % 6, p / 3 * 6 + t / 6);
      for (int k = 0; k < 4; ++k) sum[k] += kWeights[t % 6] * kWeights[t / 6] * texel[k];
    }
    expected.set(p % 3 + 1, p / 3 + 1, sum);
  }
  expectImageNear(drawQuad(PassImage(5, 4), texture, 3, 2, 0.0f, 0.0f, 1.0f, 0, 1.0f).pixels, expected, 2e-4f);
}

// The triangle (0, 0), (5, 0), (0, 4) in pixels of a 7 by 5 frame covers the pixels whose
// centre lies under x / 5 + y / 4 = 1, that is 4x + 5y <= 15. Listed in that order it
// turns clockwise on the frame, the front face. Colour (0.2, 0.6, 1, 0.5) is straight.
TEST_F(SurfaceShadersGpuTest, ColoredTriangleCoversItsPixelsAndCullsBackFaces) {
  const Rgba background{0.25f, 0.5f, 0.125f, 0.5f};
  Rgba drawn;
  ASSERT_TRUE(blendModeReference(1, 0.8f, {0.1f, 0.3f, 0.5f, 0.5f}, background, drawn));
  struct Case {
    std::vector<int> order;
    std::size_t rasterizer;
    bool drawn;
  };
  for (const Case& c : {Case{{0, 1, 2}, 1, true}, Case{{0, 2, 1}, 1, false}, Case{{0, 2, 1}, 0, true}}) {
    SCOPED_TRACE("order " + std::to_string(c.order[1]) + ", rasterizer " + std::to_string(c.rasterizer));
    PassImage expected(7, 5);
    for (std::uint32_t i = 0; i < 35; ++i) {
      const std::uint32_t x = i % 7, y = i / 7;
      expected.set(x, y, c.drawn && 4 * x + 5 * y <= 15 ? sourceOver(drawn, background) : background);
    }
    std::vector<std::byte> bytes;
    onGpu([&] {
      SurfaceShaders shaders(gpu());
      RenderBuffer target(gpu(), 7, 5, Format::Rgba16Float);
      target.clear(background);
      const auto frameCopy = target.toResourceBuffer();
      constexpr float kCorners[3][2] = {{0, 0}, {5, 0}, {0, 4}};
      VertexListTrianglePosColor triangle;
      for (int k : c.order) triangle.push({kCorners[k][0] - 3.5f, kCorners[k][1] - 2.5f, 0, 0.2f, 0.6f, 1.0f, 0.5f});
      ConstantBufferCommon constants(gpu());
      constants.create(placed(7, 5, 0.0f, 0.0f, 0.8f, 1));
      shaders.drawColored(target, triangle, constants, {frameCopy.get(), 0, c.rasterizer});
      bytes = target.readPixels();
    });
    expectImageNear(MediaTest::fromHalfPixels(bytes), expected, 2e-4f);
  }
}

}  // namespace
}  // namespace Media
