// The blend and rasterizer state tables on the GPU: blending against the CPU blend
// equation on a small odd-sized image whose alphas include 0, 1/255 and 1, culling and
// fill modes by where triangles land. (Sampler states are checked through the sampling
// frame passes.)
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "media/CpuAccessBuffer.h"
#include "media/DeviceGpu.h"
#include "media/FrameDrawResources.h"
#include "media/PixelShader.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/VertexList.h"
#include "media/pass/BlendReference.h"

namespace {

using Media::Format;
using MediaTest::onGpu;

Media::GraphicsDevice& device() {
  std::string why;
  return *MediaTest::gpuDevice(why);
}

std::vector<float> readFloats(Media::ResourceBuffer& buffer) {
  Media::CpuAccessBuffer staging(device(), buffer.width(), buffer.height(), buffer.format());
  staging.copyResource(buffer.texture());
  return MediaTest::fromHalfPixels(staging.data());
}

// Premultiplied pixels whose alphas run through 0, 1/255, 0.5 and 1.
std::vector<float> premultipliedImage(std::size_t pixels, float seed) {
  const float alphas[] = {0.0f, 1.0f / 255.0f, 0.5f, 1.0f, 0.8f};
  std::vector<float> values(pixels * 4);
  for (std::size_t i = 0; i < pixels; ++i) {
    const float a = alphas[(i + static_cast<std::size_t>(seed * 10)) % 5];
    for (int c = 0; c < 3; ++c) values[i * 4 + c] = a * std::fmod(seed + 0.29f * (i + 1) + 0.17f * c, 1.0f);
    values[i * 4 + 3] = a;
  }
  return values;
}

TEST(StateGpu, EveryBlendStateMatchesItsEquation) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kWidth = 7, kHeight = 5;
  constexpr std::size_t kPixels = kWidth * kHeight;
  const std::vector<float> src = premultipliedImage(kPixels, 0.1f);
  const std::vector<float> src1 = premultipliedImage(kPixels, 0.35f);
  const std::vector<float> dst = premultipliedImage(kPixels, 0.6f);
  const Media::Color constant{0.25f, 0.5f, 0.75f, 0.6f};

  Media::CompiledShader dual = MediaTest::framePixelShader("");
  dual.glsl =
      "#version 450 core\n"
      "layout(binding = 0) uniform sampler2D source0;\n"
      "layout(binding = 1) uniform sampler2D source1;\n"
      "layout(location = 0, index = 0) out vec4 color;\n"
      "layout(location = 0, index = 1) out vec4 second;\n"
      "void main() {\n"
      "  color = texelFetch(source0, ivec2(gl_FragCoord.xy), 0);\n"
      "  second = texelFetch(source1, ivec2(gl_FragCoord.xy), 0);\n"
      "}\n";
  onGpu([&] {
    Media::PixelShader shader(device());
    shader.load(dual);
    Media::ResourceBuffer a(device(), kWidth, kHeight, Format::Rgba16Float, MediaTest::toHalfPixels(src));
    Media::ResourceBuffer b(device(), kWidth, kHeight, Format::Rgba16Float, MediaTest::toHalfPixels(src1));
    for (std::size_t state = 0; state < Media::kBlendStateCount; ++state) {
      Media::ResourceBuffer target(device(), kWidth, kHeight, Format::Rgba16Float, MediaTest::toHalfPixels(dst));
      shader.draw(target, {&a, &b}, {nullptr, state, constant});
      const std::vector<float> result = readFloats(target);
      for (std::size_t p = 0; p < kPixels; ++p) {
        auto rgba = [p](const std::vector<float>& image) {
          return Media::Rgba{image[p * 4], image[p * 4 + 1], image[p * 4 + 2], image[p * 4 + 3]};
        };
        const Media::Rgba expectedPixel =
            Media::blendReference(Media::kBlendStates[state], rgba(src), rgba(src1), rgba(dst), constant);
        for (int c = 0; c < 4; ++c) {
          const float expected = expectedPixel[c];
          // Inputs are half floats already; the result is rounded to half once more.
          ASSERT_NEAR(result[p * 4 + c], expected, 2e-3 * std::max(1.0f, std::fabs(expected)))
              << "state " << state << " pixel " << p << " channel " << c;
        }
      }
    }
  });
}

TEST(StateGpu, RasterizerStatesCullCounterClockwiseAndDrawWireframes) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kSide = 16;
  Media::CompiledShader colour;
  colour.glsl =
      "#version 450 core\n"
      "layout(location = 0) in vec4 value;\n"
      "layout(location = 0) out vec4 color;\n"
      "void main() { color = value; }\n";
  colour.inputs = {{"SV_Position", 0, 15, Media::ComponentType::Float32},
                   {"COLOR", 0, 15, Media::ComponentType::Float32}};
  // Upper left half clockwise on the screen, red; lower right half anticlockwise, green.
  Media::VertexListTrianglePosColor list;
  list.push({-1, 1, 0, 1, 0, 0, 1});
  list.push({1, 1, 0, 1, 0, 0, 1});
  list.push({-1, -1, 0, 1, 0, 0, 1});
  list.push({1, 1, 0, 0, 1, 0, 1});
  list.push({-1, -1, 0, 0, 1, 0, 1});
  list.push({1, -1, 0, 0, 1, 0, 1});
  struct Case {
    std::size_t state;
    bool redInside, greenInside;
  };
  const Case cases[] = {{0, true, true}, {1, true, false}, {2, false, false}};
  onGpu([&] {
    Media::PixelShader shader(device());
    shader.load(colour);
    ASSERT_EQ(shader.drawPath(), Media::DrawPath::None);
    for (const Case& c : cases) {
      Media::ResourceBuffer target(device(), kSide, kSide);
      target.clear({0, 0, 0, 0});
      device().setRenderTarget(target);
      device().setRasterizerState(c.state);
      device().setBlendState(Media::kBlendStateNone, std::nullopt);
      device().frameDraw().twoVectorShader().use();
      shader.use();
      list.draw(device());
      device().clearRenderTarget();
      const std::vector<float> result = readFloats(target);
      const float* red = &result[(3 * kSide + 3) * 4];
      const float* green = &result[(12 * kSide + 12) * 4];
      EXPECT_EQ(red[0], c.redInside ? 1.0f : 0.0f) << "state " << c.state;
      EXPECT_EQ(red[3], c.redInside ? 1.0f : 0.0f) << "state " << c.state;
      EXPECT_EQ(green[1], c.greenInside ? 1.0f : 0.0f) << "state " << c.state;
      if (c.state == 2) {
        // Only the edges are drawn: the diagonal crosses the frame.
        EXPECT_GT(result[(7 * kSide + 8) * 4 + 3] + result[(8 * kSide + 7) * 4 + 3] + result[(7 * kSide + 7) * 4 + 3] +
                      result[(8 * kSide + 8) * 4 + 3],
                  0.0f);
      }
    }
    device().setRasterizerState(0);
  });
}

}  // namespace
