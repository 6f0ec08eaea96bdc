// The device on the GL back end: uploads and read-backs in each format, the cropped
// copy, shader failures, the vertex lists and the rasterizer states. (Positions and
// coordinates, and compute images of either format, are checked with compiled shaders.)
#include <gtest/gtest.h>

#include <cstring>

#include "media/DeviceGpu.h"
#include "media/FrameDrawResources.h"
#include "media/PixelShader.h"
#include "media/ResourceBuffer.h"
#include "media/VertexList.h"
#include "media/VertexShader.h"
#include "system/Exception.h"

namespace {

using Media::Format;
using MediaTest::gpu;
using MediaTest::onGpu;
using MediaTest::readBack;

std::vector<std::byte> bytePattern(std::size_t size, std::uint8_t seed) {
  std::vector<std::byte> bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = std::byte(static_cast<std::uint8_t>(i * 37 + seed));
  return bytes;
}

template <class T>
std::vector<std::byte> asBytes(const std::vector<T>& values) {
  std::vector<std::byte> bytes(values.size() * sizeof(T));
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

// A pixel shader that writes the colour its vertices carry under `semantic`.
Media::CompiledShader passThrough(const char* semantic) {
  Media::CompiledShader shader;
  shader.glsl =
      "#version 450 core\n"
      "layout(location = 0) in vec4 value;\n"
      "layout(location = 0) out vec4 color;\n"
      "void main() { color = value; }\n";
  shader.inputs = {{"SV_Position", 0, 15, Media::ComponentType::Float32},
                   {semantic, 0, 15, Media::ComponentType::Float32}};
  return shader;
}

TEST(DeviceGpu, EveryFormatComesBackAsItWasUploaded) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kWidth = 6, kHeight = 3;  // YUY2 needs an even width
  const std::size_t pixels = kWidth * kHeight;
  std::vector<float> floats(pixels * 4);
  for (std::size_t i = 0; i < floats.size(); ++i) floats[i] = static_cast<float>(i) * 0.37f - 3.0f;
  std::vector<std::int16_t> snorm(pixels * 4);
  for (std::size_t i = 0; i < snorm.size(); ++i) snorm[i] = static_cast<std::int16_t>(i * 911 - 30000);

  struct Case {
    Format format;
    std::vector<std::byte> pixels;
  };
  const Case cases[] = {
      {Format::Rgba8Unorm, bytePattern(pixels * 4, 1)},
      {Format::Bgra8Unorm, bytePattern(pixels * 4, 2)},
      {Format::Bgrx8Unorm, bytePattern(pixels * 4, 3)},
      {Format::A8Unorm, bytePattern(pixels, 4)},
      {Format::Rgba16Unorm, bytePattern(pixels * 8, 5)},
      {Format::Rgba16Snorm, asBytes(snorm)},
      {Format::Rgba16Float, MediaTest::toHalfPixels(floats)},
      {Format::Rg32Float, asBytes(std::vector<float>(floats.begin(), floats.begin() + pixels * 2))},
      {Format::R32Float, asBytes(std::vector<float>(floats.begin(), floats.begin() + pixels))},
      {Format::Yuy2, bytePattern(pixels * 2, 6)},
  };
  onGpu([&] {
    for (const Case& c : cases) {
      Media::ResourceBuffer buffer(gpu(), kWidth, kHeight, c.format, c.pixels);
      EXPECT_EQ(readBack(buffer), c.pixels) << "format " << static_cast<int>(c.format);
    }
  });
}

TEST(DeviceGpu, MaskIsSampledAsAlphaOverBlack) {
  MEDIA_REQUIRE_GPU();
  const std::vector<std::byte> mask = {std::byte{0}, std::byte{1}, std::byte{128}, std::byte{255}, std::byte{7}};
  onGpu([&] {
    Media::ResourceBuffer source(gpu(), 5, 1, Format::A8Unorm, mask);
    Media::ResourceBuffer target(gpu(), 5, 1);
    Media::PixelShader copy(gpu());
    copy.load(MediaTest::framePixelShader("color = texelFetch(source0, ivec2(gl_FragCoord.xy), 0);"));
    copy.draw(target, {&source});
    const std::vector<float> result = MediaTest::fromHalfPixels(readBack(target));
    for (std::size_t i = 0; i < mask.size(); ++i) {
      EXPECT_EQ(result[i * 4 + 0], 0.0f);
      EXPECT_EQ(result[i * 4 + 2], 0.0f);
      EXPECT_NEAR(result[i * 4 + 3], static_cast<float>(mask[i]) / 255.0f, 1e-3) << i;
    }
  });
}

TEST(DeviceGpu, CropPlacesTheOverlapAndLeavesTheRestTransparent) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kWidth = 5, kHeight = 4;
  const std::vector<std::byte> pixels = bytePattern(kWidth * kHeight * 4, 9);
  struct Case {
    std::uint32_t width, height;
    std::int32_t x, y;
  };
  const Case cases[] = {{4, 3, -1, 2}, {7, 6, -2, -1}, {3, 3, 4, 3}, {2, 2, 9, 9}};
  onGpu([&] {
    Media::ResourceBuffer source(gpu(), kWidth, kHeight, Format::Rgba8Unorm, pixels);
    for (const Case& c : cases) {
      auto cropped = source.crop(c.width, c.height, c.x, c.y);
      const std::vector<std::byte> result = readBack(*cropped);
      for (std::uint32_t y = 0; y < c.height; ++y) {
        for (std::uint32_t x = 0; x < c.width; ++x) {
          const std::int64_t sx = std::int64_t{c.x} + x, sy = std::int64_t{c.y} + y;
          const bool inside = sx >= 0 && sy >= 0 && sx < kWidth && sy < kHeight;
          for (std::uint32_t k = 0; k < 4; ++k) {
            const std::byte expected = inside ? pixels[(sy * kWidth + sx) * 4 + k] : std::byte{0};
            ASSERT_EQ(result[(y * c.width + x) * 4 + k], expected) << c.x << "," << c.y << " at " << x << "," << y;
          }
        }
      }
    }
  });
}

TEST(DeviceGpu, ShaderThatDoesNotCompileNamesTheCallAndThePlace) {
  MEDIA_REQUIRE_GPU();
  onGpu([&] {
    Media::PixelShader shader(gpu());
    try {
      shader.load(MediaTest::framePixelShader("color = undeclared;"));
      ADD_FAILURE() << "the shader must not load";
    } catch (const System::HResultException& e) {
      EXPECT_NE(e.text().find("glCreateShaderProgramv() failed"), std::string::npos);
      EXPECT_NE(e.text().find("Media::PixelShader::loadFromMemory"), std::string::npos);
    }
  });
}

TEST(DeviceGpu, QuadListsCoverTheirQuadsAndCarryNormals) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kSide = 8;
  // Position and texture data pass through; the colour shows the normal, or the data
  // where the list has none.
  Media::CompiledShader vertex;
  vertex.stage = Media::ShaderStage::Vertex;
  vertex.glsl =
      "#version 450 core\n"
      "out gl_PerVertex { vec4 gl_Position; };\n"
      "layout(location = 0) in vec4 position;\n"
      "layout(location = 1) in vec4 data;\n"
      "layout(location = 2) in vec3 normal;\n"
      "layout(location = 0) out vec4 value;\n"
      "void main() { gl_Position = position; value = normal == vec3(0.0) ? data : vec4(normal, 1.0); }\n";
  vertex.inputs = {{"POSITION", 0, 15, Media::ComponentType::Float32},
                   {"TEXCOORD", 0, 15, Media::ComponentType::Float32},
                   {"NORMAL", 0, 7, Media::ComponentType::Float32}};
  auto quad = [](float left, float top, float right, float bottom, float tag) {
    return std::vector<Media::XYZ_UV_NORM>{{left, top, 0.5f, tag, 0, 0, 1, 0, 0, 0},
                                           {right, top, 0.5f, tag, 0, 0, 1, 0, 0, 0},
                                           {right, bottom, 0.5f, tag, 0, 0, 1, 0, 0, 0},
                                           {left, bottom, 0.5f, tag, 0, 0, 1, 0, 0, 0}};
  };
  onGpu([&] {
    Media::VertexShader vertices(gpu());
    vertices.load(vertex);
    Media::PixelShader shader(gpu());
    shader.load(passThrough("TEXCOORD"));
    Media::VertexListQuadPosUvNorm single, pair, lit;
    single.vertices() = quad(-1, 1, 0, -1, 0.25f);  // left half
    pair.vertices() = quad(0, 1, 1, 0, 0.5f);       // top right
    const auto bottomRight = quad(0, 0, 1, -1, 0.75f);
    pair.vertices().insert(pair.vertices().end(), bottomRight.begin(), bottomRight.end());
    Media::VertexListQuadPosUv flat;
    for (const Media::XYZ_UV_NORM& v : quad(-1, 1, 1, -1, 0)) flat.push({v.x, v.y, v.z, v.u, v.v, v.s, v.t});

    Media::ResourceBuffer target(gpu(), kSide, kSide);
    target.clear({0, 0, 0, 0});
    gpu().setRenderTarget(target);
    gpu().setRasterizerState(0);
    gpu().setBlendState(Media::kBlendStateNone, std::nullopt);
    vertices.use();
    shader.use();
    single.draw(gpu());
    pair.draw(gpu());
    gpu().clearRenderTarget();
    std::vector<float> result = MediaTest::fromHalfPixels(readBack(target));
    for (std::uint32_t y = 0; y < kSide; ++y) {
      for (std::uint32_t x = 0; x < kSide; ++x) {
        const float expected = x < kSide / 2 ? 0.25f : y < kSide / 2 ? 0.5f : 0.75f;
        ASSERT_EQ(result[(y * kSide + x) * 4], expected) << x << "," << y;
      }
    }

    // Clockwise on the screen, so facing the viewer: the normal is -z, towards the eye.
    gpu().setRenderTarget(target);
    flat.drawWithNormal(gpu());
    gpu().clearRenderTarget();
    result = MediaTest::fromHalfPixels(readBack(target));
    for (std::size_t p = 0; p < kSide * kSide; ++p) {
      ASSERT_EQ(result[p * 4 + 0], 0.0f) << p;
      ASSERT_EQ(result[p * 4 + 2], -1.0f) << p;
    }
  });
}

TEST(DeviceGpu, RasterizerStatesCullCounterClockwiseAndDrawWireframes) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kSide = 16;
  // Upper left half clockwise on the screen, red; lower right half anticlockwise, green.
  Media::VertexListTrianglePosColor list;
  for (const Media::XYZ_COL& v : {Media::XYZ_COL{-1, 1, 0, 1, 0, 0, 1}, {1, 1, 0, 1, 0, 0, 1}, {-1, -1, 0, 1, 0, 0, 1},
                                  {1, 1, 0, 0, 1, 0, 1}, {-1, -1, 0, 0, 1, 0, 1}, {1, -1, 0, 0, 1, 0, 1}}) {
    list.push(v);
  }
  struct Case {
    std::size_t state;
    bool redInside, greenInside;
  };
  onGpu([&] {
    Media::PixelShader shader(gpu());
    shader.load(passThrough("COLOR"));
    ASSERT_EQ(shader.drawPath(), Media::DrawPath::None);
    for (const Case& c : {Case{0, true, true}, Case{1, true, false}, Case{2, false, false}}) {
      Media::ResourceBuffer target(gpu(), kSide, kSide);
      target.clear({0, 0, 0, 0});
      gpu().setRenderTarget(target);
      gpu().setRasterizerState(c.state);
      gpu().setBlendState(Media::kBlendStateNone, std::nullopt);
      gpu().frameDraw().twoVectorShader().use();
      shader.use();
      list.draw(gpu());
      gpu().clearRenderTarget();
      const std::vector<float> result = MediaTest::fromHalfPixels(readBack(target));
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
    gpu().setRasterizerState(0);
  });
}

}  // namespace
