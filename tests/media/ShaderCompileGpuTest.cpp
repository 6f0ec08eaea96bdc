// Script shaders end to end on the GL back end: HLSL as a script carries it, compiled,
// loaded and run on odd-sized buffers, with the results checked against arithmetic done
// here. The constants are packed by hand the HLSL way, so a layout that drifts from it
// shows as wrong pixels.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>

#include "media/ComputeShader.h"
#include "media/ConstantBufferCommon.h"
#include "media/CpuAccessBuffer.h"
#include "media/DeviceGpu.h"
#include "media/PixelShader.h"
#include "media/ResourceBuffer.h"
#include "media/ShaderCompile.h"

namespace {

using Media::Format;
using Media::ShaderCompile;
using MediaTest::onGpu;

// Half floats hold 11 significant bits; the values below stay under 4.
constexpr float kHalfTolerance = 4e-3f;

Media::GraphicsDevice& device() {
  std::string why;
  return *MediaTest::gpuDevice(why);
}

std::vector<std::byte> readBack(Media::ResourceBuffer& buffer) {
  Media::CpuAccessBuffer staging(device(), buffer.width(), buffer.height(), buffer.format());
  staging.copyResource(buffer.texture());
  return staging.takeData();
}

// RGBA values that differ in every channel from pixel to pixel.
std::vector<float> rampPixels(std::uint32_t width, std::uint32_t height) {
  std::vector<float> values(std::size_t{width} * height * 4);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      float* p = &values[(std::size_t{y} * width + x) * 4];
      p[0] = 0.1f * x;
      p[1] = 0.2f * y;
      p[2] = 0.05f * (x + y);
      p[3] = 0.25f * ((x + 2 * y) % 5);
    }
  }
  return values;
}

TEST(ShaderCompileGpu, PixelShaderSamplesItsSourceWithHlslPackedConstants) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kWidth = 7, kHeight = 5;
  const Media::CompiledShader compiled = ShaderCompile::compileFromMemory("fx\\grade.anm.grade", R"(
Texture2D source : register(t0);
SamplerState smp : register(s0);
cbuffer constant0 : register(b0) { float gain; float2 shift; float3 tint; float bias; };
float4 grade(float4 pos : SV_Position, float2 uv : TEXCOORD) : SV_Target {
  float4 c = source.Sample(smp, uv);
  return float4(c.rgb * gain * tint + float3(shift, bias), c.a);
}
)", "grade", "ps_5_0");
  // float at 0, float2 at 4 (it fits the first register), float3 at 16 (it does not),
  // float at 28 behind it: 32 bytes.
  const float gain = 1.5f, shift[2] = {0.125f, -0.25f}, tint[3] = {2.0f, 0.5f, 3.0f}, bias = 0.375f;
  const float constants[8] = {gain, shift[0], shift[1], 0.0f, tint[0], tint[1], tint[2], bias};
  const std::vector<float> pixels = rampPixels(kWidth, kHeight);
  onGpu([&] {
    Media::PixelShader shader(device());
    shader.load(compiled);
    ASSERT_EQ(shader.drawPath(), Media::DrawPath::PositionTexCoord);
    Media::ConstantBufferCommon buffer(device());
    buffer.create(constants);
    Media::ResourceBuffer source(device(), kWidth, kHeight, Format::Rgba16Float, MediaTest::toHalfPixels(pixels));
    Media::ResourceBuffer target(device(), kWidth, kHeight, Format::Rgba16Float);
    Media::PassOptions options;
    options.constants = &buffer;
    shader.draw(target, {&source}, options);
    const std::vector<float> result = MediaTest::fromHalfPixels(readBack(target));
    for (std::size_t p = 0; p < std::size_t{kWidth} * kHeight; ++p) {
      const float* c = &pixels[p * 4];
      const float expected[4] = {c[0] * gain * tint[0] + shift[0], c[1] * gain * tint[1] + shift[1],
                                 c[2] * gain * tint[2] + bias, c[3]};
      for (int k = 0; k < 4; ++k) ASSERT_NEAR(result[p * 4 + k], expected[k], kHalfTolerance) << p << "." << k;
    }
  });
}

TEST(ShaderCompileGpu, ComputeShaderWritesTargetsInTheirOwnFormat) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kWidth = 7, kHeight = 5, kSourceWidth = 9, kSourceHeight = 7;
  const Media::CompiledShader compiled = ShaderCompile::compileFromMemory("fx\\move.anm.move", R"(
RWTexture2D<float4> target : register(u0);
Texture2D<float4> source : register(t0);
cbuffer constant0 : register(b0) { int2 offset; float scale; };
[numthreads(8, 8, 1)]
void move(uint3 id : SV_DispatchThreadID) {
  uint width, height;
  target.GetDimensions(width, height);
  if (id.x >= width || id.y >= height) return;
  target[id.xy] = source.Load(int3(int2(id.xy) + offset, 0)) * scale;
}
)", "move", "cs_5_0");
  // int2 at 0 as two 32-bit integers, float at 8.
  const std::int32_t offset[2] = {2, 1};
  const float scale = 0.5f;
  std::uint32_t constants[4] = {static_cast<std::uint32_t>(offset[0]), static_cast<std::uint32_t>(offset[1]), 0, 0};
  std::memcpy(&constants[2], &scale, 4);
  const std::vector<float> pixels = rampPixels(kSourceWidth, kSourceHeight);
  auto expected = [&](std::uint32_t x, std::uint32_t y, int k) {
    return pixels[((y + offset[1]) * kSourceWidth + x + offset[0]) * 4 + k] * scale;
  };
  onGpu([&] {
    Media::ComputeShader shader(device());
    shader.load(compiled);
    EXPECT_EQ(shader.source().threadGroupSize[0], 8u);
    Media::ConstantBufferCommon buffer(device());
    buffer.create(constants);
    Media::ResourceBuffer source(device(), kSourceWidth, kSourceHeight, Format::Rgba16Float,
                                 MediaTest::toHalfPixels(pixels));
    // The mask format is stored as 8-bit RGBA: the second target takes a second program,
    // made with the rgba8 qualifier, from the same shader.
    Media::ResourceBuffer half(device(), kWidth, kHeight, Format::Rgba16Float);
    Media::ResourceBuffer mask(device(), kWidth, kHeight, Format::A8Unorm);
    half.clear({0, 0, 0, 0});
    mask.clear({0, 0, 0, 0});
    for (Media::ResourceBuffer* target : {&half, &mask}) {
      device().setComputeTarget(0, *target);
      shader.dispatch(1, 1, 1, {&source}, {&buffer});
    }
    const std::vector<float> halfResult = MediaTest::fromHalfPixels(readBack(half));
    const std::vector<std::byte> maskResult = readBack(mask);
    for (std::uint32_t y = 0; y < kHeight; ++y) {
      for (std::uint32_t x = 0; x < kWidth; ++x) {
        const std::size_t p = std::size_t{y} * kWidth + x;
        for (int k = 0; k < 4; ++k) {
          ASSERT_NEAR(halfResult[p * 4 + k], expected(x, y, k), kHalfTolerance) << x << "," << y << "." << k;
        }
        // One step of 8 bits covers the rounding of the unorm store.
        ASSERT_NEAR(static_cast<float>(maskResult[p]), expected(x, y, 3) * 255.0f, 1.0f) << x << "," << y;
      }
    }
  });
}

TEST(ShaderCompileGpu, SignatureChoosesTheDrawPath) {
  MEDIA_REQUIRE_GPU();
  const Media::CompiledShader positionOnly = ShaderCompile::compileFromMemory("fx\\a.anm.place", R"(
float4 place(float4 pos : SV_Position) : SV_Target { return float4(pos.xy, 0.5, 1.0); }
)", "place", "ps_5_0");
  const Media::CompiledShader colourOnly = ShaderCompile::compileFromMemory("fx\\a.anm.tinted", R"(
float4 tinted(float4 c : COLOR) : SV_Target { return c; }
)", "tinted", "ps_5_0");
  constexpr std::uint32_t kWidth = 5, kHeight = 3;
  onGpu([&] {
    Media::ResourceBuffer target(device(), kWidth, kHeight, Format::Rgba16Float);
    Media::PixelShader place(device());
    place.load(positionOnly);
    ASSERT_EQ(place.drawPath(), Media::DrawPath::Position);
    place.draw(target);
    const std::vector<float> result = MediaTest::fromHalfPixels(readBack(target));
    for (std::uint32_t y = 0; y < kHeight; ++y) {
      for (std::uint32_t x = 0; x < kWidth; ++x) {
        const float* p = &result[(std::size_t{y} * kWidth + x) * 4];
        EXPECT_EQ(p[0], x + 0.5f);
        EXPECT_EQ(p[1], y + 0.5f);
        EXPECT_EQ(p[2], 0.5f);
      }
    }

    Media::PixelShader tinted(device());
    tinted.load(colourOnly);
    EXPECT_EQ(tinted.drawPath(), Media::DrawPath::None);
    EXPECT_THROW(tinted.draw(target), std::bad_function_call);
  });
}

}  // namespace
