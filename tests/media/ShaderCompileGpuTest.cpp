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
#include "media/DeviceGpu.h"
#include "media/PixelShader.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/ShaderCompile.h"

namespace {

using Media::Format;
using Media::ShaderCompile;
using MediaTest::gpu;
using MediaTest::onGpu;
using MediaTest::readBack;

// Half floats hold 11 significant bits; the results below stay under 8, where a half
// float rounds by at most 2^-9.
constexpr float kHalfTolerance = 4e-3f;

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
  const std::vector<float> pixels = MediaTest::testImage(kWidth, kHeight, 0).pixels;
  onGpu([&] {
    Media::PixelShader shader(gpu());
    shader.load(compiled);
    ASSERT_EQ(shader.drawPath(), Media::DrawPath::PositionTexCoord);
    Media::ConstantBufferCommon buffer(gpu());
    buffer.create(constants);
    Media::ResourceBuffer source(gpu(), kWidth, kHeight, Format::Rgba16Float, MediaTest::toHalfPixels(pixels));
    Media::ResourceBuffer target(gpu(), kWidth, kHeight, Format::Rgba16Float);
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

// The targets are read and written: a store in the wrong format, or a dispatch that
// keeps the program of the previous target's format, shows in the sums.
TEST(ShaderCompileGpu, ComputeShaderReadsAndWritesTargetsInTheirOwnFormat) {
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
  target[id.xy] += source.Load(int3(int2(id.xy) + offset, 0)) * scale;
}
)", "move", "cs_5_0");
  // int2 at 0 as two 32-bit integers, float at 8.
  const std::int32_t offset[2] = {2, 1};
  const float scale = 0.5f;
  std::uint32_t constants[4] = {static_cast<std::uint32_t>(offset[0]), static_cast<std::uint32_t>(offset[1]), 0, 0};
  std::memcpy(&constants[2], &scale, 4);
  const std::vector<float> pixels = MediaTest::testImage(kSourceWidth, kSourceHeight, 2).pixels;
  auto moved = [&](std::uint32_t x, std::uint32_t y, int k) {
    return pixels[((y + offset[1]) * kSourceWidth + x + offset[0]) * 4 + k] * scale;
  };
  onGpu([&] {
    Media::ComputeShader shader(gpu());
    shader.load(compiled);
    EXPECT_EQ(shader.source().threadGroupSize[0], 8u);
    Media::ConstantBufferCommon buffer(gpu());
    buffer.create(constants);
    Media::ResourceBuffer source(gpu(), kSourceWidth, kSourceHeight, Format::Rgba16Float,
                                 MediaTest::toHalfPixels(pixels));
    // The mask format is stored as 8-bit RGBA: its target takes a second program, made
    // with the rgba8 qualifier, from the same shader. The half target is added to twice
    // around it, from 0.25.
    Media::ResourceBuffer half(gpu(), kWidth, kHeight, Format::Rgba16Float);
    Media::ResourceBuffer mask(gpu(), kWidth, kHeight, Format::A8Unorm);
    half.clear({0.25f, 0.25f, 0.25f, 0.25f});
    mask.clear({0, 0, 0, 0});
    for (Media::ResourceBuffer* target : {&half, &mask, &half}) {
      gpu().setComputeTarget(0, *target);
      shader.dispatch(1, 1, 1, {&source}, {&buffer});
    }
    const std::vector<float> halfResult = MediaTest::fromHalfPixels(readBack(half));
    const std::vector<std::byte> maskResult = readBack(mask);
    for (std::uint32_t y = 0; y < kHeight; ++y) {
      for (std::uint32_t x = 0; x < kWidth; ++x) {
        const std::size_t p = std::size_t{y} * kWidth + x;
        for (int k = 0; k < 4; ++k) {
          ASSERT_NEAR(halfResult[p * 4 + k], 0.25f + 2 * moved(x, y, k), kHalfTolerance) << x << "," << y << "." << k;
        }
        // One step of 8 bits covers the rounding of the unorm store.
        ASSERT_NEAR(static_cast<float>(maskResult[p]), moved(x, y, 3) * 255.0f, 1.0f) << x << "," << y;
      }
    }
  });
}

// Positions count from the top left at pixel centres, coordinates run 0 to 1 over the
// frame, on either path; a signature with neither draws nothing.
TEST(ShaderCompileGpu, SignatureChoosesTheDrawPathAndPositionsCountFromTheTopLeft) {
  MEDIA_REQUIRE_GPU();
  constexpr std::uint32_t kWidth = 7, kHeight = 5;
  struct Case {
    const char* entry;
    const char* source;
    Media::DrawPath path;
  };
  const Case cases[] = {
      {"place", "float4 place(float4 pos : SV_Position) : SV_Target { return float4(pos.xy, 0.5, 0.25); }",
       Media::DrawPath::Position},
      {"probe",
       "float4 probe(float4 pos : SV_Position, float2 uv : TEXCOORD) : SV_Target { return float4(pos.xy, uv); }",
       Media::DrawPath::PositionTexCoord},
  };
  onGpu([&] {
    for (const Case& c : cases) {
      SCOPED_TRACE(c.entry);
      Media::PixelShader shader(gpu());
      shader.load(ShaderCompile::compileFromMemory(std::string("fx\\a.anm.") + c.entry, c.source, c.entry, "ps_5_0"));
      ASSERT_EQ(shader.drawPath(), c.path);
      Media::RenderBuffer frame(gpu(), kWidth, kHeight);
      shader.draw(frame);
      const std::vector<float> result = MediaTest::fromHalfPixels(frame.readPixels());
      const bool coordinates = c.path == Media::DrawPath::PositionTexCoord;
      for (std::uint32_t y = 0; y < kHeight; ++y) {
        for (std::uint32_t x = 0; x < kWidth; ++x) {
          const float* p = &result[(std::size_t{y} * kWidth + x) * 4];
          EXPECT_EQ(p[0], x + 0.5f);
          EXPECT_EQ(p[1], y + 0.5f);
          EXPECT_NEAR(p[2], coordinates ? (x + 0.5f) / kWidth : 0.5f, 1e-3);
          EXPECT_NEAR(p[3], coordinates ? (y + 0.5f) / kHeight : 0.25f, 1e-3);
        }
      }
      EXPECT_EQ(MediaTest::fromHalfPixels(readBack(*frame.toResourceBuffer())), result);
    }
    Media::PixelShader tinted(gpu());
    tinted.load(ShaderCompile::compileFromMemory(
        "fx\\a.anm.tinted", "float4 tinted(float4 c : COLOR) : SV_Target { return c; }", "tinted", "ps_5_0"));
    EXPECT_EQ(tinted.drawPath(), Media::DrawPath::None);
    Media::ResourceBuffer target(gpu(), kWidth, kHeight, Format::Rgba16Float);
    EXPECT_THROW(tinted.draw(target), std::bad_function_call);
  });
}

}  // namespace
