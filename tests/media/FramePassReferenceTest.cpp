#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "media/pass/BlendStateTable.h"
#include "media/reference/FramePassReference.h"
#include "media/reference/SampleReference.h"
#include "system/Exception.h"

namespace Media {
namespace {

PassImage row(std::uint32_t width, std::uint32_t height, const std::vector<Rgba>& pixels) {
  PassImage image(width, height);
  for (std::uint32_t i = 0; i < pixels.size(); ++i) image.set(i % width, i / width, pixels[i]);
  return image;
}

template <typename Constants>
std::vector<std::byte> bytes(const Constants& constants) {
  const auto span = constantBytes(constants);
  return {span.begin(), span.end()};
}

struct PassCase {
  const char* what;
  FramePass pass;
  std::vector<std::byte> constants;
  PassImage source;
  std::uint32_t width, height;
  std::vector<Rgba> expected;
};

const ColorMatrixConstants kMatrix{{1, 0.5f, 0, 0, 0, 1, 0, 0.25f, 0, 0, 2, 0, 0, 0, 0, 1}, {0.1f, 0.2f, 0.3f, 0.9f}};

// Expected values worked by hand from what each pass is meant to do.
std::vector<PassCase> passCases() {
  const float tiny = 1.0f / 255.0f;
  const float third = 1.0f / 3.0f;
  return {
      // Row-major matrix times (rgb + offset, 1): a transposed matrix gives 0.3 first.
      {"matrix add first", FramePass::ColorMatrixAddFirst, bytes(kMatrix), row(1, 1, {{0.2f, 0.4f, 0.1f, 0.5f}}), 1, 1,
       {{0.6f, 0.85f, 0.8f, 1.0f}}},
      {"matrix add last", FramePass::ColorMatrixAddLast, bytes(kMatrix), row(1, 1, {{1.5f, -0.2f, 0.5f, 0.5f}}), 1, 1,
       {{1.1f, 0.325f, 1.3f, 1.4f}}},
      {"offset reads outside as 0", FramePass::CopyOffset, bytes(OffsetConstants{{2, 0}}),
       row(3, 1, {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}}), 3, 1, {{0, 0, 1, 1}, {}, {}}},
      {"offset clamps to the edge", FramePass::CopyOffsetClamped, bytes(OffsetConstants{{-1, 0}}),
       row(3, 1, {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}}), 3, 1, {{1, 0, 0, 1}, {1, 0, 0, 1}, {0, 1, 0, 1}}},
      {"mask to colour", FramePass::MaskToColor, bytes(ColorConstants{{1, 0.5f, 0.25f, 1}}),
       row(1, 1, {{0.9f, 0.9f, 0.9f, 0.5f}}), 1, 1, {{0.5f, 0.25f, 0.125f, 0.5f}}},
      {"straight to premultiplied", FramePass::StraightToPremultiplied, {},
       row(2, 1, {{0.5f, 0.25f, 1, 0.5f}, {0.7f, 0.3f, 0.2f, 0}}), 2, 1, {{0.25f, 0.125f, 0.5f, 0.5f}, {}}},
      {"premultiplied to straight", FramePass::PremultipliedToStraight, {},
       row(3, 1, {{0.25f, 0.125f, 0.5f, 0.5f}, {0.3f, 0, 0, 0}, {0.5f * tiny, 0.25f * tiny, tiny, tiny}}), 3, 1,
       {{0.5f, 0.25f, 1, 0.5f}, {}, {0.5f, 0.25f, 1, tiny}}},
      // Colour clamped into 0 to the saturated alpha.
      {"clamp to alpha", FramePass::ClampToAlpha, {}, row(2, 1, {{0.7f, -0.1f, 0.2f, 0.5f}, {2, 1, 0.5f, 1.5f}}), 2, 1,
       {{0.5f, 0, 0.2f, 0.5f}, {1, 1, 0.5f, 1}}},
      // Means of three from x * 3 - 1, the first and last windows clamped at the edges.
      {"box along x", FramePass::BoxX, bytes(BoxConstants{3, -1}),
       row(7, 1, {{0, 0, 0, 1}, {1, 0, 0, 1}, {2, 0, 0, 1}, {3, 0, 0, 1}, {4, 0, 0, 1}, {5, 0, 0, 1}, {6, 0, 0, 1}}),
       3, 1, {{third, 0, 0, 1}, {3, 0, 0, 1}, {17 * third, 0, 0, 1}}},
      {"box along y", FramePass::BoxY, bytes(BoxConstants{2, 1}),
       row(1, 5, {{0, 0, 0, 1}, {0, 2, 0, 1}, {0, 4, 0, 1}, {0, 6, 0, 1}, {0, 8, 0, 1}}), 1, 3,
       {{0, 3, 0, 1}, {0, 7, 0, 1}, {0, 8, 0, 1}}},
      // Luma 0.6142: w = (0.6142 - 0.5) * 2; colour times w, limited to 0.15.
      {"glow", FramePass::Glow, bytes(GlowConstants{0.5f, 2.0f, 0.15f}), row(1, 1, {{0.8f, 0.6f, 0.2f, 1}}), 1, 1,
       {{0.15f, 0.6f * 0.2284f, 0.2f * 0.2284f, 0.2284f}}},
      {"exponential remap", FramePass::ExpRemap, bytes(ExpRemapConstants{2.0f}), row(1, 1, {{0, 1, 0.5f, 0.3f}}), 1,
       1, {{std::exp(1.0f), std::exp(3.0f), std::exp(2.0f), 0.3f}}},
      // Inverted lumas 0.6 and 0.65 between 0.5 and 0.7: smoothstep of 0.5 and 0.75.
      {"soft mask", FramePass::SoftMask, bytes(SoftMaskConstants{0.5f, 0.7f, {1, 1}}),
       row(2, 1, {{0.4f, 0.4f, 0.4f, 1}, {0.35f, 0.35f, 0.35f, 1}}), 2, 1, {{0, 0, 0, 0.5f}, {0, 0, 0, 0.84375f}}},
      // Two source pixels per target pixel: the mean of each pair.
      {"resize by half", FramePass::Resize, bytes(ResizeConstants{{2, 1}}),
       row(4, 1, {{1, 0, 0, 1}, {3, 0, 0, 1}, {5, 0, 0, 1}, {7, 0, 0, 1}}), 2, 1, {{2, 0, 0, 1}, {6, 0, 0, 1}}},
  };
}

TEST(FramePassReference, PassesGiveHandComputedPixels) {
  for (const PassCase& c : passCases()) {
    SCOPED_TRACE(c.what);
    const FramePassResult result = framePassReference(c.pass, c.constants, &c.source, nullptr, c.width, c.height);
    for (std::uint32_t i = 0; i < c.expected.size(); ++i) {
      const Rgba actual = result.color.at(i % c.width, i / c.width);
      for (int k = 0; k < 4; ++k) {
        EXPECT_NEAR(actual[k], c.expected[i][k], 1e-4f) << "pixel " << i << " component " << k;
      }
    }
  }
}

// Below 1.05 source pixels per target pixel one bilinear tap at the centre; above, two
// taps spread over the footprint. The source has one bright texel, so the two differ.
TEST(FramePassReference, ResizeSwitchesToABoxAboveRatio105) {
  const PassImage source = row(4, 1, {{0, 0, 0, 1}, {0, 0, 0, 1}, {4, 0, 0, 1}, {0, 0, 0, 1}});
  const auto at = [&](float ratio) {
    return framePassReference(FramePass::Resize, constantBytes(ResizeConstants{{ratio, 1}}), &source, nullptr, 4, 1)
        .color.at(1, 0)[0];
  };
  EXPECT_NEAR(at(1.05f), 0.0f, 1e-6f);
  EXPECT_NEAR(at(1.06f), 0.53f, 1e-5f);
}

TEST(FramePassReference, LogRemapUndoesExpRemap) {
  const PassImage source = row(4, 1, {{0, 0.25f, 1, 1}, {0.5f, 0.75f, 0.1f, 0}, {2, -1, 0.3f, 0.5f}, {}});
  const FramePassResult up = framePassReference(FramePass::ExpRemap, constantBytes(ExpRemapConstants{3.0f}), &source,
                                                nullptr, 4, 1);
  const FramePassResult down = framePassReference(FramePass::LogRemap, constantBytes(LogRemapConstants{1.0f / 3.0f}),
                                                  &up.color, nullptr, 4, 1);
  for (std::uint32_t x = 0; x < 4; ++x) {
    const Rgba in = source.at(x, 0);
    const Rgba out = down.color.at(x, 0);
    for (int k = 0; k < 3; ++k) EXPECT_NEAR(out[k], std::clamp(in[k], 0.0f, 1.0f), 1e-5f) << x << "," << k;
    EXPECT_EQ(out[3], in[3]);
  }
}

TEST(FramePassReference, DualSourceWipeMixesByTheMaskAlpha) {
  const PassImage before = row(2, 1, {{1, 0, 0, 1}, {1, 0, 0, 1}});
  const PassImage mask = row(2, 1, {{0, 0, 0, 0.25f}, {0, 0, 0, 1}});
  const PassImage target = row(2, 1, {{0, 0, 1, 1}, {0, 0, 1, 1}});
  const FramePassResult result = framePassReference(FramePass::CopyTwo, {}, &before, &mask, 2, 1);
  const PassImage wiped = blendResultReference(result, 5, {}, target);
  EXPECT_EQ(wiped.at(0, 0), (Rgba{0.75f, 0, 0.25f, 1}));
  EXPECT_EQ(wiped.at(1, 0), (Rgba{0, 0, 1, 1}));
}

TEST(FramePassReference, DiscardedPixelsKeepTheTarget) {
  // Mode 1 (add) with the source shifted one pixel left: pixel 1 reads past the source's
  // edge, finds alpha 0 and is discarded.
  const PassImage source = row(2, 1, {{0.1f, 0.1f, 0.1f, 0.5f}, {0.2f, 0.2f, 0.2f, 0.5f}});
  const PassImage frame = row(2, 1, {{0.4f, 0.4f, 0.4f, 1}, {0.4f, 0.4f, 0.4f, 1}});
  const FramePassResult result = framePassReference(
      FramePass::BlendModeOffset, constantBytes(OutputConstants{1, 1.0f, {1, 0}}), &source, &frame, 2, 1);
  EXPECT_EQ(result.written, (std::vector<std::uint8_t>{1, 0}));
  const PassImage drawn = blendResultReference(result, kBlendStateSourceOver, {}, frame);
  EXPECT_NEAR(drawn.at(0, 0)[0], 0.4f * 0.5f + 0.2f + 0.4f * 0.5f, 1e-6f);
  EXPECT_EQ(drawn.at(1, 0), frame.at(1, 0));
}

TEST(FramePassReference, ShortConstantsOrMissingSourcesThrow) {
  const PassImage source(1, 1);
  EXPECT_THROW(framePassReference(FramePass::ColorMatrixAddFirst, constantBytes(AlphaConstants{1}), &source, nullptr,
                                  1, 1),
               System::NoteException);
  EXPECT_THROW(framePassReference(FramePass::CopyTwo, {}, &source, nullptr, 1, 1), System::NoteException);
}

TEST(SampleReference, AddressModesPlaceTexelsOutsideTheImage) {
  const PassImage image = row(3, 1, {{1, 0, 0, 1}, {2, 0, 0, 1}, {3, 0, 0, 1}});
  struct Case {
    AddressMode mode;
    float before, after;  // red of texel -1 and texel 3
  };
  for (const Case& c : {Case{AddressMode::Border, 0.5f, 0.5f}, Case{AddressMode::Clamp, 1, 3},
                        Case{AddressMode::Wrap, 3, 1}, Case{AddressMode::Mirror, 1, 3}}) {
    const SamplerState point{SamplerFilter::Point, c.mode, c.mode, c.mode, {0.5f, 0.5f, 0.5f, 0.5f}};
    EXPECT_EQ(sampleReference(image, point, -0.5f / 3, 0.5f)[0], c.before) << static_cast<int>(c.mode);
    EXPECT_EQ(sampleReference(image, point, 3.5f / 3, 0.5f)[0], c.after) << static_cast<int>(c.mode);
  }
  // Bilinear between texels 0 and 1, a quarter of the way.
  EXPECT_NEAR(sampleReference(image, kSamplerStates[1], 0.75f / 3, 0.5f)[0], 1.25f, 1e-6f);
}

}  // namespace
}  // namespace Media
