// The device on the GL back end: uploads and read-backs in each format, the cropped
// copy, the conventions of positions and coordinates, compute shaders writing images of
// either format, shader failures and the vertex lists.
#include <gtest/gtest.h>

#include <cstring>

#include "media/ComputeShader.h"
#include "media/CpuAccessBuffer.h"
#include "media/DeviceGpu.h"
#include "media/PixelShader.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/VertexList.h"
#include "media/VertexShader.h"
#include "system/Exception.h"

namespace {

using Media::Format;
using MediaTest::onGpu;

Media::GraphicsDevice& device() {
  std::string why;
  return *MediaTest::gpuDevice(why);
}

std::vector<std::byte> readBack(Media::ResourceBuffer& buffer) {
  Media::CpuAccessBuffer staging(device(), buffer.width(), buffer.height(), buffer.format());
  staging.copyResource(buffer.texture());
  return staging.takeData();
}

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
      Media::ResourceBuffer buffer(device(), kWidth, kHeight, c.format, c.pixels);
      EXPECT_EQ(readBack(buffer), c.pixels) << "format " << static_cast<int>(c.format);
    }
  });
}

TEST(DeviceGpu, MaskIsSampledAsAlphaOverBlack) {
  MEDIA_REQUIRE_GPU();
  const std::vector<std::byte> mask = {std::byte{0}, std::byte{1}, std::byte{128}, std::byte{255}, std::byte{7}};
  onGpu([&] {
    Media::ResourceBuffer source(device(), 5, 1, Format::A8Unorm, mask);
    Media::ResourceBuffer target(device(), 5, 1);
    Media::PixelShader copy(device());
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
    Media::ResourceBuffer source(device(), kWidth, kHeight, Format::Rgba8Unorm, pixels);
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

TEST(DeviceGpu, PixelPositionsAndCoordinatesCountFromTheTopLeftAtCentres) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kWidth = 7, kHeight = 5;
  Media::CompiledShader probe;
  probe.glsl =
      "#version 450 core\n"
      "layout(location = 0) in vec2 texCoord;\n"
      "layout(location = 0) out vec4 color;\n"
      "void main() { color = vec4(gl_FragCoord.xy, texCoord); }\n";
  probe.inputs = {{"SV_Position", 0, 15, Media::ComponentType::Float32},
                  {"TEXCOORD", 0, 3, Media::ComponentType::Float32}};
  onGpu([&] {
    Media::PixelShader shader(device());
    shader.load(probe);
    ASSERT_EQ(shader.drawPath(), Media::DrawPath::PositionTexCoord);
    Media::RenderBuffer frame(device(), kWidth, kHeight);
    shader.draw(frame);
    const std::vector<float> result = MediaTest::fromHalfPixels(frame.readPixels());
    for (std::uint32_t y = 0; y < kHeight; ++y) {
      for (std::uint32_t x = 0; x < kWidth; ++x) {
        const float* p = &result[(y * kWidth + x) * 4];
        EXPECT_EQ(p[0], x + 0.5f);
        EXPECT_EQ(p[1], y + 0.5f);
        EXPECT_NEAR(p[2], (x + 0.5f) / kWidth, 1e-3);
        EXPECT_NEAR(p[3], (y + 0.5f) / kHeight, 1e-3);
      }
    }
    EXPECT_EQ(MediaTest::fromHalfPixels(readBack(*frame.toResourceBuffer())), result);
  });
}

TEST(DeviceGpu, ShaderThatDoesNotCompileNamesTheCallAndThePlace) {
  MEDIA_REQUIRE_GPU();
  onGpu([&] {
    Media::PixelShader shader(device());
    try {
      shader.load(MediaTest::framePixelShader("color = undeclared;"));
      ADD_FAILURE() << "the shader must not load";
    } catch (const System::HResultException& e) {
      EXPECT_NE(e.text().find("glCreateShaderProgramv() failed"), std::string::npos);
      EXPECT_NE(e.text().find("Media::PixelShader::loadFromMemory"), std::string::npos);
    }
  });
}

TEST(DeviceGpu, ComputeShaderWritesImagesOfEitherFormat) {
  MEDIA_REQUIRE_GPU();
  Media::CompiledShader add;
  add.stage = Media::ShaderStage::Compute;
  add.glsl =
      "#version 450 core\n"
      "layout(local_size_x = 4, local_size_y = 4) in;\n"
      "layout(binding = 0, SORVEL_IMAGE_FORMAT_0) uniform image2D target;\n"
      "void main() {\n"
      "  ivec2 p = ivec2(gl_GlobalInvocationID.xy);\n"
      "  if (any(greaterThanEqual(p, imageSize(target)))) return;\n"
      "  imageStore(target, p, imageLoad(target, p) + vec4(0.25, 0.5, 0.0, 1.0));\n"
      "}\n";
  add.images = {{0, 0}};
  onGpu([&] {
    Media::ComputeShader shader(device());
    shader.load(add);
    Media::ResourceBuffer half(device(), 5, 3), mask(device(), 5, 3, Format::A8Unorm);
    half.clear({0.5f, 0.5f, 0.5f, 0.0f});
    mask.clear({0, 0, 0, 0});
    for (Media::ResourceBuffer* target : {&half, &mask, &half}) {
      device().setComputeTarget(0, *target);
      shader.dispatch(2, 1, 1);
    }
    const std::vector<float> values = MediaTest::fromHalfPixels(readBack(half));
    for (std::size_t p = 0; p < 15; ++p) {
      EXPECT_FLOAT_EQ(values[p * 4 + 0], 1.0f);
      EXPECT_FLOAT_EQ(values[p * 4 + 1], 1.5f);
      EXPECT_FLOAT_EQ(values[p * 4 + 3], 2.0f);
    }
    const std::vector<std::byte> alpha = readBack(mask);
    for (std::byte a : alpha) EXPECT_EQ(a, std::byte{255});
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
  Media::CompiledShader pixel;
  pixel.glsl =
      "#version 450 core\n"
      "layout(location = 0) in vec4 value;\n"
      "layout(location = 0) out vec4 color;\n"
      "void main() { color = value; }\n";
  pixel.inputs = {{"SV_Position", 0, 15, Media::ComponentType::Float32},
                  {"TEXCOORD", 0, 15, Media::ComponentType::Float32}};
  auto quad = [](float left, float top, float right, float bottom, float tag) {
    return std::vector<Media::XYZ_UV_NORM>{{left, top, 0.5f, tag, 0, 0, 1, 0, 0, 0},
                                           {right, top, 0.5f, tag, 0, 0, 1, 0, 0, 0},
                                           {right, bottom, 0.5f, tag, 0, 0, 1, 0, 0, 0},
                                           {left, bottom, 0.5f, tag, 0, 0, 1, 0, 0, 0}};
  };
  onGpu([&] {
    Media::VertexShader vertices(device());
    vertices.load(vertex);
    Media::PixelShader shader(device());
    shader.load(pixel);
    Media::VertexListQuadPosUvNorm single, pair, lit;
    single.vertices() = quad(-1, 1, 0, -1, 0.25f);  // left half
    pair.vertices() = quad(0, 1, 1, 0, 0.5f);       // top right
    const auto bottomRight = quad(0, 0, 1, -1, 0.75f);
    pair.vertices().insert(pair.vertices().end(), bottomRight.begin(), bottomRight.end());
    Media::VertexListQuadPosUv flat;
    for (const Media::XYZ_UV_NORM& v : quad(-1, 1, 1, -1, 0)) flat.push({v.x, v.y, v.z, v.u, v.v, v.s, v.t});

    Media::ResourceBuffer target(device(), kSide, kSide);
    target.clear({0, 0, 0, 0});
    device().setRenderTarget(target);
    device().setRasterizerState(0);
    device().setBlendState(Media::kBlendStateNone, std::nullopt);
    vertices.use();
    shader.use();
    single.draw(device());
    pair.draw(device());
    device().clearRenderTarget();
    std::vector<float> result = MediaTest::fromHalfPixels(readBack(target));
    for (std::uint32_t y = 0; y < kSide; ++y) {
      for (std::uint32_t x = 0; x < kSide; ++x) {
        const float expected = x < kSide / 2 ? 0.25f : y < kSide / 2 ? 0.5f : 0.75f;
        ASSERT_EQ(result[(y * kSide + x) * 4], expected) << x << "," << y;
      }
    }

    // Clockwise on the screen, so facing the viewer: the normal is -z, towards the eye.
    device().setRenderTarget(target);
    flat.drawWithNormal(device());
    device().clearRenderTarget();
    result = MediaTest::fromHalfPixels(readBack(target));
    for (std::size_t p = 0; p < kSide * kSide; ++p) {
      ASSERT_EQ(result[p * 4 + 0], 0.0f) << p;
      ASSERT_EQ(result[p * 4 + 2], -1.0f) << p;
    }
  });
}

}  // namespace
