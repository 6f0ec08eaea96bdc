// The frame and its neighbours on the GPU: the frame written in place by passes, the
// fused composition and a script's compute shader; masks that keep alpha alone; YUY2
// rows of odd width; a read-back that the next frame's drawing cannot reach.
#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

#include "media/ComputeShader.h"
#include "media/ConstantBufferCommon.h"
#include "media/CpuAccessBuffer.h"
#include "media/DeviceGpu.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/ShaderCompile.h"
#include "media/pass/BlendStateTable.h"
#include "media/pass/FramePasses.h"
#include "media/reference/FramePassReference.h"

namespace Media {
namespace {

using MediaTest::expectImageNear;
using MediaTest::fromHalfPixels;
using MediaTest::gpu;
using MediaTest::onGpu;
using MediaTest::readBack;
using MediaTest::readImage;
using MediaTest::testImage;
using MediaTest::upload;

constexpr std::uint32_t kWidth = 7;
constexpr std::uint32_t kHeight = 5;

PassImage filled(std::uint32_t width, std::uint32_t height, const Rgba& color) {
  PassImage image(width, height);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) image.set(x, y, color);
  }
  return image;
}

PassImage readFrame(RenderBuffer& frame) {
  PassImage image(frame.width(), frame.height());
  image.pixels = fromHalfPixels(frame.readPixels());
  return image;
}

// What `layers` composed source-over onto `below` give, by the reference.
PassImage composed(PassImage below, const std::vector<PassImage>& layers) {
  for (const PassImage& layer : layers) {
    below = blendResultReference(framePassReference(FramePass::Copy, {}, &layer, nullptr, below.width, below.height),
                                 kBlendStateSourceOver, {}, below);
  }
  return below;
}

// The frame itself is the target: a pass dispatch, the fused composition and a script
// compute shader each write it in place, with no resource buffer in between.
TEST(FrameTargetGpu, FrameIsWrittenInPlaceByDispatchesAndScriptComputeShaders) {
  MEDIA_REQUIRE_GPU();
  const Rgba background{0.125f, 0.25f, 0.375f, 0.5f};
  const std::vector<PassImage> layers = {testImage(kWidth, kHeight, 2), testImage(kWidth, kHeight, 4),
                                         testImage(kWidth, kHeight, 6)};
  const CompiledShader halve = ShaderCompile::compileFromMemory("fx\\frame.anm2.halve", R"(
RWTexture2D<float4> framebuffer : register(u0);
[numthreads(8, 8, 1)]
void halve(uint3 id : SV_DispatchThreadID) {
  uint width, height;
  framebuffer.GetDimensions(width, height);
  if (id.x < width && id.y < height) framebuffer[id.xy] = framebuffer[id.xy] * 0.5;
}
)", "halve", "cs_5_0");

  PassImage expected = composed(filled(kWidth, kHeight, background), {layers[0]});
  expected = composed(expected, {layers[1], layers[2]});
  for (float& value : expected.pixels) value *= 0.5f;

  PassImage actual;
  onGpu([&] {
    FramePasses passes(gpu(), kWidth, kHeight);
    RenderBuffer frame(gpu(), kWidth, kHeight);
    frame.clear({background[0], background[1], background[2], background[3]});
    auto first = upload(layers[0]), second = upload(layers[1]), third = upload(layers[2]);
    PassOptions sourceOver;
    sourceOver.blendState = kBlendStateSourceOver;
    passes.run(FramePass::Copy, FramePassPath::Compute, frame, {first.get()}, sourceOver);
    ResourceBuffer* rest[] = {second.get(), third.get()};
    passes.composeSourceOver(frame, rest, FramePassPath::Compute);
    ComputeShader shader(gpu());
    shader.load(halve);
    gpu().setComputeTarget(0, frame);
    shader.dispatch(1, 1, 1);
    actual = readFrame(frame);
  });
  expectImageNear(actual.pixels, expected, 1e-4f);
}

// A mask stores alpha alone whatever is drawn or cleared into it, and reads back as
// (0, 0, 0, a) as a single-channel mask would.
TEST(FrameTargetGpu, DrawsAndClearsIntoAMaskKeepAlphaAlone) {
  MEDIA_REQUIRE_GPU();
  PassImage afterFill, afterClear;
  std::vector<std::byte> maskBytes;
  onGpu([&] {
    FramePasses passes(gpu(), 4, 4);
    ResourceBuffer mask(gpu(), 3, 1, Format::A8Unorm);
    ResourceBuffer view(gpu(), 3, 1);
    ConstantBufferCommon color(gpu());
    color.create(ColorConstants{{0.25f, 0.5f, 1.0f, 0.75f}});
    PassOptions fill;
    fill.constants = &color;
    passes.pixelShader(FramePass::Fill).draw(mask, {}, fill);
    maskBytes = readBack(mask);
    passes.run(FramePass::Copy, FramePassPath::Draw, view, {&mask});
    afterFill = readImage(view);
    mask.clear({1, 1, 1, 0.5f});
    passes.run(FramePass::Copy, FramePassPath::Draw, view, {&mask});
    afterClear = readImage(view);
  });
  EXPECT_EQ(maskBytes, std::vector<std::byte>(3, std::byte{191}));
  expectImageNear(afterFill.pixels, filled(3, 1, {0, 0, 0, 191.0f / 255.0f}), 1e-3f);
  expectImageNear(afterClear.pixels, filled(3, 1, {0, 0, 0, 128.0f / 255.0f}), 1e-3f);
}

// A YUY2 image of odd width has rows of whole blocks; it goes up and comes back byte
// for byte, without reading past its rows.
TEST(FrameTargetGpu, Yuy2OfOddWidthRoundTrips) {
  MEDIA_REQUIRE_GPU();
  std::vector<std::byte> pixels(rowBytes(Format::Yuy2, 3) * 2);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<std::byte>(i * 29 + 3);
  std::vector<std::byte> back;
  onGpu([&] {
    ResourceBuffer image(gpu(), 3, 2, Format::Yuy2, pixels);
    back = readBack(image);
  });
  EXPECT_EQ(back, pixels);
}

// A read-back started after frame 1 gives frame 1 although frame 2 is drawn into the
// same buffer before anyone waits; the wait and the copy happen on the reader's thread.
TEST(FrameTargetGpu, ReadBackOverlapsTheNextFramesWork) {
  MEDIA_REQUIRE_GPU();
  std::unique_ptr<RenderBuffer> frame;
  std::unique_ptr<CpuAccessBuffer> firstRead;
  onGpu([&] {
    frame = std::make_unique<RenderBuffer>(gpu(), kWidth, kHeight);
    frame->clear({1, 0, 0, 1});
    firstRead = frame->startReadBack();
  });
  // Frame 2 is queued on the GPU thread while frame 1 is waited for here.
  gpu().post([&] { frame->clear({0, 0, 1, 1}); });
  std::vector<std::byte> first;
  std::thread reader([&] { first = firstRead->takeData(); });
  reader.join();
  PassImage second;
  onGpu([&] { second = readFrame(*frame); });
  expectImageNear(fromHalfPixels(first), filled(kWidth, kHeight, {1, 0, 0, 1}), 0);
  expectImageNear(second.pixels, filled(kWidth, kHeight, {0, 0, 1, 1}), 0);
  firstRead.reset();
  onGpu([&] { frame.reset(); });
}

// A script shader whose constant block is longer than the constants it is given reads
// zeros past them.
TEST(FrameTargetGpu, ShortConstantBufferReadsZerosPastItsEnd) {
  MEDIA_REQUIRE_GPU();
  const CompiledShader compiled = ShaderCompile::compileFromMemory("fx\\short.anm2.sum", R"(
cbuffer constant0 : register(b0) { float4 given; float4 missing[3]; };
float4 sum(float4 p : SV_Position) : SV_Target { return given + missing[0] + missing[1] + missing[2]; }
)", "sum", "ps_5_0");
  PassImage actual;
  onGpu([&] {
    PixelShader shader(gpu());
    shader.load(compiled);
    ConstantBufferCommon constants(gpu());
    constants.create(Color{0.25f, 0.5f, 0.75f, 1});
    ResourceBuffer target(gpu(), 2, 2);
    shader.draw(target, {}, {&constants, std::nullopt, std::nullopt});
    actual = readImage(target);
  });
  expectImageNear(actual.pixels, filled(2, 2, {0.25f, 0.5f, 0.75f, 1}), 0);
}

}  // namespace
}  // namespace Media
