#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "media/ConstantBufferCommon.h"
#include "media/ResourceBuffer.h"
#include "media/pass/BlendStateTable.h"
#include "media/reference/FramePassReference.h"
#include "media/pass/FramePasses.h"
#include "DeviceGpu.h"

// Every frame pass and blend state by both paths on small odd-sized RGBA16F images,
// against the CPU reference. Tolerance: 2e-3 relative plus 1e-4 absolute. Inputs are
// rounded to half precision before the reference sees them, so what remains is the
// rounding of the result (2^-11 relative) and, on the draw path, of the pass's output
// before the blender reads it.

namespace Media {
namespace {

using MediaTest::expectImageNear;
using MediaTest::gpu;
using MediaTest::onGpu;
using MediaTest::readImage;
using MediaTest::testImage;
using MediaTest::upload;

constexpr std::uint32_t kWidth = 7;
constexpr std::uint32_t kHeight = 5;
constexpr Rgba kFactor{0.25f, 0.5f, 0.75f, 0.4f};
constexpr FramePassPath kPaths[] = {FramePassPath::Draw, FramePassPath::Compute};

template <typename Constants>
std::vector<std::byte> bytes(const Constants& constants) {
  const auto span = constantBytes(constants);
  return {span.begin(), span.end()};
}

struct PassSetup {
  std::vector<std::byte> constants;
  std::uint32_t width = kWidth, height = kHeight;
};

// Constants that make each pass do real work: an asymmetric matrix, offsets that push
// reads past the edges, box windows that clamp, a resize with two taps on one axis.
PassSetup setupFor(FramePass pass) {
  switch (pass) {
    case FramePass::ColorMatrixAddFirst:
    case FramePass::ColorMatrixAddLast:
      return {bytes(ColorMatrixConstants{{1, 0.5f, 0, 0.1f, 0, 1, -0.25f, 0.25f, 0.3f, 0, 2, 0, 0, 0.2f, 0, 1},
                                         {0.1f, -0.2f, 0.3f, 0.4f}})};
    case FramePass::Fill:
    case FramePass::MaskToColor: return {bytes(ColorConstants{{0.3f, 0.6f, 0.9f, 0.75f}})};
    case FramePass::CopyOffset:
    case FramePass::CopyOffsetClamped: return {bytes(OffsetConstants{{2, -1}})};
    case FramePass::CopyAlpha: return {bytes(AlphaConstants{0.6f})};
    case FramePass::CopyOffsetAlpha: return {bytes(OutputConstants{0, 0.6f, {-1, 2}})};
    case FramePass::BoxX: return {bytes(BoxConstants{3, -1}), 3, kHeight};
    case FramePass::BoxY: return {bytes(BoxConstants{2, 1}), kWidth, 3};
    case FramePass::Sample: return {{}, 2 * kWidth, 2 * kHeight};
    case FramePass::Resize: return {bytes(ResizeConstants{{1.75f, 0.5f}}), 4, 2 * kHeight};
    case FramePass::Glow: return {bytes(GlowConstants{0.1f, 2.0f, 0.4f})};
    case FramePass::ExpRemap: return {bytes(ExpRemapConstants{2.5f})};
    case FramePass::LogRemap: return {bytes(LogRemapConstants{0.4f})};
    case FramePass::SoftMask: return {bytes(SoftMaskConstants{0.3f, 0.7f, {0.5f, 1.5f}}), 2 * kWidth, kHeight};
    default: return {bytes(OutputConstants{0, 0.8f, {1, -1}})};
  }
}

class FramePassGpuTest : public ::testing::Test {
 protected:
  void SetUp() override {
    MEDIA_REQUIRE_GPU();
    if (!passes_) passes_ = std::make_unique<FramePasses>(gpu(), kWidth, kHeight);
  }
  // The passes hold GPU objects: they go while the program's device still lives.
  static void TearDownTestSuite() { passes_.reset(); }

  // Runs `pass` by `path` onto a copy of `target` and compares with the reference.
  void check(FramePass pass, FramePassPath path, const PassSetup& setup, std::size_t state,
             std::size_t sampler = 1) {
    SCOPED_TRACE(std::string(framePassInfo(pass).name) + (path == FramePassPath::Draw ? " draw" : " compute") +
                 ", blend state " + std::to_string(state) + ", sampler " + std::to_string(sampler));
    const PassImage source0 = testImage(kWidth, kHeight, 0);
    const PassImage source1 = testImage(kWidth, kHeight, 3);
    const PassImage target = testImage(setup.width, setup.height, 1);
    const FramePassResult result = framePassReference(pass, setup.constants, &source0, &source1, setup.width,
                                                      setup.height, kSamplerStates[sampler]);
    const PassImage expected = blendResultReference(result, static_cast<std::uint32_t>(state), kFactor, target);
    PassImage actual;
    onGpu([&] {
      auto gpuSource0 = upload(source0);
      auto gpuSource1 = upload(source1);
      auto gpuTarget = upload(target);
      ConstantBufferCommon constants(gpu());
      PassOptions options;
      if (!setup.constants.empty()) {
        constants.create(setup.constants.data(), setup.constants.size());
        options.constants = &constants;
      }
      options.blendState = state;
      options.blendFactor = kFactor;
      gpu().setSampler(0, sampler);
      passes_->run(pass, path, *gpuTarget, {gpuSource0.get(), gpuSource1.get()}, options);
      gpu().setSampler(0, 1);
      actual = readImage(*gpuTarget);
    });
    expectImageNear(actual.pixels, expected, 1e-4f);
  }

  static inline std::unique_ptr<FramePasses> passes_;
};

// The sampling pass by every sampler state, the others by the default one, state 1.
TEST_F(FramePassGpuTest, EveryPassMatchesTheReferenceByBothPaths) {
  for (std::size_t p = 0; p < kFramePassCount; ++p) {
    const auto pass = static_cast<FramePass>(p);
    if (pass == FramePass::BlendMode || pass == FramePass::BlendModeOffset) continue;
    const std::vector<std::size_t> states =
        pass == FramePass::CopyTwo ? std::vector<std::size_t>{5, 6, 7} : std::vector<std::size_t>{0, 4};
    const std::size_t samplers = pass == FramePass::Sample ? kSamplerStateCount : 1;
    for (FramePassPath path : kPaths) {
      for (std::size_t state : states) {
        for (std::size_t s = 0; s < samplers; ++s) check(pass, path, setupFor(pass), state, samplers == 1 ? 1 : s);
      }
    }
  }
}

TEST_F(FramePassGpuTest, EveryBlendStateMatchesTheReferenceByBothPaths) {
  for (std::size_t state = 0; state < kBlendStateCount; ++state) {
    // The dual-source states read the second colour, which only pass 7 writes.
    const bool dual = state >= 5 && state <= 7;
    for (FramePassPath path : kPaths) check(dual ? FramePass::CopyTwo : FramePass::Copy, path, {}, state);
  }
}

TEST_F(FramePassGpuTest, BlendModesMatchTheReferenceByBothPaths) {
  for (FramePass pass : {FramePass::BlendMode, FramePass::BlendModeOffset}) {
    for (std::int32_t mode : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 20, 21, 22, 23}) {
      // Modes 20 and up replace the frame's pixel; the others are drawn source-over.
      const std::size_t state = mode >= 20 ? kBlendStateNone : kBlendStateSourceOver;
      for (FramePassPath path : kPaths) check(pass, path, {bytes(OutputConstants{mode, 0.8f, {1, -1}})}, state);
    }
  }
}

TEST_F(FramePassGpuTest, FusedSourceOverEqualsOneDrawPerLayer) {
  // Seventeen layers: one full dispatch of sixteen and one of a single layer.
  std::vector<PassImage> layers;
  for (std::uint32_t i = 0; i < 17; ++i) layers.push_back(testImage(kWidth, kHeight, 5 + i));
  PassImage expected = testImage(kWidth, kHeight, 1);
  for (const PassImage& layer : layers) {
    expected = blendResultReference(framePassReference(FramePass::Copy, {}, &layer, nullptr, kWidth, kHeight),
                                    kBlendStateSourceOver, {}, expected);
  }
  for (FramePassPath path : kPaths) {
    SCOPED_TRACE(path == FramePassPath::Draw ? "draw" : "compute");
    PassImage actual;
    onGpu([&] {
      std::vector<std::unique_ptr<ResourceBuffer>> gpuLayers;
      std::vector<ResourceBuffer*> pointers;
      for (const PassImage& layer : layers) {
        gpuLayers.push_back(upload(layer));
        pointers.push_back(gpuLayers.back().get());
      }
      auto target = upload(testImage(kWidth, kHeight, 1));
      passes_->composeSourceOver(*target, pointers, path);
      actual = readImage(*target);
    });
    expectImageNear(actual.pixels, expected, 1e-4f);
  }
}

// Values worked out by hand from what each pass is said to compute, not from the CPU
// reference: a source of two pixels (or four along x for the box), no blending.
TEST_F(FramePassGpuTest, PassesGiveTheValuesWorkedOutByHand) {
  const float e = 2.7182818f;
  struct Case {
    FramePass pass;
    std::vector<std::byte> constants;
    std::vector<Rgba> source;
    std::vector<Rgba> expected;
  };
  const Case cases[] = {
      // transform * saturate(rgba) + offset, with a diagonal transform.
      {FramePass::ColorMatrixAddLast,
       bytes(ColorMatrixConstants{{0.5f, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1}, {0.125f, 0, 0, 0}}),
       {{0.375f, 1.5f, 0.25f, 1}, {-1, 0.5f, 0.5f, 0.5f}},
       {{0.3125f, 1, 0.5f, 1}, {0.125f, 0.5f, 1, 0.5f}}},
      {FramePass::Fill, bytes(ColorConstants{{0.25f, 0.5f, 0.75f, 0.5f}}), {{}, {}},
       {{0.25f, 0.5f, 0.75f, 0.5f}, {0.25f, 0.5f, 0.75f, 0.5f}}},
      {FramePass::FillWhite, {}, {{}, {}}, {{1, 1, 1, 1}, {1, 1, 1, 1}}},
      // The colour times the source's alpha.
      {FramePass::MaskToColor, bytes(ColorConstants{{0.25f, 0.5f, 0.75f, 1}}), {{0.5f, 0, 0, 0.5f}, {0, 0, 0, 1}},
       {{0.125f, 0.25f, 0.375f, 0.5f}, {0.25f, 0.5f, 0.75f, 1}}},
      {FramePass::CopyAlpha, bytes(AlphaConstants{0.5f}), {{0.375f, 0.25f, 0.125f, 0.75f}, {1, 1, 1, 1}},
       {{0.1875f, 0.125f, 0.0625f, 0.375f}, {0.5f, 0.5f, 0.5f, 0.5f}}},
      {FramePass::StraightToPremultiplied, {}, {{0.5f, 0.25f, 1, 0.5f}, {1, 0.5f, 0, 0.25f}},
       {{0.25f, 0.125f, 0.5f, 0.5f}, {0.25f, 0.125f, 0, 0.25f}}},
      {FramePass::PremultipliedToStraight, {}, {{0.25f, 0.125f, 0.5f, 0.5f}, {0.25f, 0.125f, 0, 0.25f}},
       {{0.5f, 0.25f, 1, 0.5f}, {1, 0.5f, 0, 0.25f}}},
      {FramePass::CopyOpaque, {}, {{0.25f, 0.5f, 0.75f, 0.5f}, {0, 0, 0, 0}}, {{0.25f, 0.5f, 0.75f, 1}, {0, 0, 0, 1}}},
      {FramePass::Saturate, {}, {{1.5f, -0.25f, 0.5f, 2}, {0, 1, 0.25f, 0.75f}},
       {{1, 0, 0.5f, 1}, {0, 1, 0.25f, 0.75f}}},
      // Two pixels of the target from four of the source, then one that starts at the
      // last source pixel and reads it again past the edge.
      {FramePass::BoxX, bytes(BoxConstants{2, 0}), {{0.125f, 0, 0, 1}, {0.375f, 0, 0, 1}, {0.5f, 0, 0, 1}, {0.75f, 0, 0, 1}},
       {{0.25f, 0, 0, 1}, {0.625f, 0, 0, 1}}},
      {FramePass::BoxX, bytes(BoxConstants{2, 3}), {{0.125f, 0, 0, 1}, {0.375f, 0, 0, 1}, {0.5f, 0, 0, 1}, {0.75f, 0, 0, 1}},
       {{0.75f, 0, 0, 1}, {0.75f, 0, 0, 1}}},
      // Luma 0.5 above a threshold of 0.25 with ratio 2 gives w = 0.5; luma 1 gives
      // w = 1.5, which the limit 0.5 caps in colour and 1 in alpha.
      {FramePass::Glow, bytes(GlowConstants{0.25f, 2, 0.5f}), {{0.5f, 0.5f, 0.5f, 1}, {1, 1, 1, 1}},
       {{0.25f, 0.25f, 0.25f, 0.5f}, {0.5f, 0.5f, 0.5f, 1}}},
      // exp2((c * 1 + 1) * log2(e)) = e^(c + 1).
      {FramePass::ExpRemap, bytes(ExpRemapConstants{1}), {{0, 0.5f, 1, 0.5f}, {2, -1, 0.25f, 1}},
       {{e, e * std::sqrt(e), e * e, 0.5f}, {e * e, e, std::exp(1.25f), 1}}},
      // (ln(c) - 1) * 0.5, where a channel below e (never an output of pass 21) reads as e.
      {FramePass::LogRemap, bytes(LogRemapConstants{0.5f}), {{e, e * e, 1, 0.25f}, {e * std::sqrt(e), 1, e, 1}},
       {{0, 0.5f, 0, 0.25f}, {0.25f, 0, 0, 1}}},
  };
  for (const Case& c : cases) {
    PassImage source(static_cast<std::uint32_t>(c.source.size()), 1);
    for (std::uint32_t x = 0; x < source.width; ++x) source.set(x, 0, c.source[x]);
    PassImage expected(static_cast<std::uint32_t>(c.expected.size()), 1);
    for (std::uint32_t x = 0; x < expected.width; ++x) expected.set(x, 0, c.expected[x]);
    for (FramePassPath path : kPaths) {
      SCOPED_TRACE(std::string(framePassInfo(c.pass).name) + (path == FramePassPath::Draw ? " draw" : " compute"));
      PassImage actual;
      onGpu([&] {
        auto gpuSource = upload(source);
        auto target = upload(PassImage(expected.width, 1));
        ConstantBufferCommon constants(gpu());
        PassOptions options;
        if (!c.constants.empty()) {
          constants.create(c.constants.data(), c.constants.size());
          options.constants = &constants;
        }
        passes_->run(c.pass, path, *target, {gpuSource.get()}, options);
        actual = readImage(*target);
      });
      expectImageNear(actual.pixels, expected, 1e-3f);
    }
  }
}

}  // namespace
}  // namespace Media
