#include <gtest/gtest.h>

#include "media/reference/BlendModeReference.h"
#include "media/reference/BlendReference.h"

namespace Media {
namespace {

void expectNear(const Rgba& actual, const Rgba& expected) {
  for (int c = 0; c < 4; ++c) EXPECT_NEAR(actual[c], expected[c], 1e-5f) << "component " << c;
}

// Values worked by hand from the factors of each row.
TEST(BlendReference, StatesCombineFactorsPerChannelGroup) {
  const Rgba src{0.2f, 0.4f, 0.1f, 0.5f};
  const Rgba dst{0.6f, 0.3f, 0.8f, 0.75f};
  const Rgba none{};
  const Rgba mask{0.0f, 0.0f, 0.0f, 0.25f};
  const Rgba factor{0.5f, 0.25f, 1.0f, 0.2f};
  // Row 16 with factors that would zero the source colour and the target alpha.
  BlendStateDesc max = kBlendStates[16];
  max.src = BlendFactor::Zero;
  max.destAlpha = BlendFactor::Zero;
  BlendStateDesc min = max;
  min.op = BlendOp::Min;
  min.opAlpha = BlendOp::Min;
  const Rgba low{0.9f, 0.1f, 0.5f, 0.2f}, high{0.3f, 0.7f, 0.5f, 0.6f};
  struct Case {
    BlendStateDesc state;
    Rgba src, src1, dst, factor, expected;
  };
  const Case cases[] = {
      // Source-over: dst * (1 - 0.5).
      {kBlendStates[0], src, none, dst, none, {0.5f, 0.55f, 0.5f, 0.875f}},
      // Beneath: src * (1 - 0.75) + dst.
      {kBlendStates[1], src, none, dst, none, {0.65f, 0.4f, 0.825f, 0.875f}},
      // No blending writes the source, whatever the target holds.
      {kBlendStates[4], src, none, dst, none, src},
      // Dual source: src * (1 - 0.25) + dst * 0.25, and the other way round.
      {kBlendStates[5], src, mask, dst, none, {0.3f, 0.375f, 0.275f, 0.5625f}},
      {kBlendStates[6], src, mask, dst, none, {0.5f, 0.325f, 0.625f, 0.6875f}},
      // Colour multiplies the target; alpha stays.
      {kBlendStates[11], src, none, dst, none, {0.12f, 0.12f, 0.08f, 0.75f}},
      // Blend factor for colour, its alpha for alpha, dst alpha kept by 1 - src alpha.
      {kBlendStates[14], src, none, dst, factor, {0.7f, 0.4f, 0.9f, 0.475f}},
      // Max: the larger value of each channel.
      {kBlendStates[16], src, none, dst, none, {0.6f, 0.4f, 0.8f, 0.75f}},
      // Cross-fade by the factor: src * k + dst * (1 - k), alpha by k.a.
      {kBlendStates[20], src, none, dst, factor, {0.4f, 0.325f, 0.1f, 0.7f}},
      {kBlendStates[21], src, none, dst, factor, {0.4f, 0.375f, 0.8f, 0.55f}},
      // Min and Max ignore the factors.
      {max, low, none, high, none, {0.9f, 0.7f, 0.5f, 0.6f}},
      {min, low, none, high, none, {0.3f, 0.1f, 0.5f, 0.2f}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    expectNear(blendReference(c.state, c.src, c.src1, c.dst, c.factor), c.expected);
  }
}

struct ModeCase {
  std::int32_t mode;
  float opacity;
  Rgba source, frame, expected;
};

TEST(BlendModeReference, ModesFollowTheirColourFormulas) {
  const Rgba s{0.2f, 0.3f, 0.4f, 0.5f};
  const Rgba d{0.6f, 0.4f, 0.2f, 1.0f};
  const Rgba bright{1.0f, 0.9f, 0.2f, 1.0f};
  const Rgba grey{0.5f, 0.5f, 0.5f, 1.0f}, red{1.0f, 0.0f, 0.0f, 1.0f};
  const ModeCase cases[] = {
      {0, 0.5f, s, d, {0.1f, 0.15f, 0.2f, 0.25f}},
      {1, 1.0f, s, d, {0.5f, 0.5f, 0.5f, 0.5f}},    // d * a + s
      {2, 1.0f, s, d, {0.1f, -0.1f, -0.3f, 0.5f}},  // d * a - s
      {3, 1.0f, s, d, {0.12f, 0.12f, 0.08f, 0.5f}},
      {4, 1.0f, s, d, {0.38f, 0.38f, 0.42f, 0.5f}},  // s + d * (a - s)
      // Overlay: d >= 0.5 takes 2 * screen - a, d < 0.5 takes 2 * d * s.
      {5, 1.0f, s, d, {0.26f, 0.24f, 0.16f, 0.5f}},
      {6, 1.0f, s, d, {0.3f, 0.3f, 0.4f, 0.5f}},
      {7, 1.0f, s, d, {0.2f, 0.2f, 0.1f, 0.5f}},
      // Through YUV a grey source keeps its luma and takes the frame's chroma, and the
      // other way round; pure red has U -0.169 and V 0.5.
      {8, 1.0f, grey, red,
       {0.5f + 1.402f * 0.5f, 0.5f + 0.344f * 0.169f - 0.714f * 0.5f, 0.5f - 1.772f * 0.169f, 1.0f}},
      {9, 1.0f, grey, red, {0.299f, 0.299f, 0.299f, 1.0f}},
      {10, 1.0f, s, bright, {0.2f, 0.25f, 0.0f, 0.5f}},  // clamp(d * a + s - a, 0, a)
      {11, 1.0f, s, bright, {0.4f, 0.5f, 0.4f, 0.5f}},   // clamp(d * a + 2s - a, 0, a)
      {12, 1.0f, s, d, {0.1f, 0.1f, 0.3f, 0.5f}},
      // Unknown modes draw as mode 0.
      {15, 1.0f, s, d, s},
      // Replacing modes: A * norm(S * o + D) and friends.
      {20, 1.0f, {0.2f, 0.0f, 0.0f, 0.25f}, {0.0f, 0.25f, 0.0f, 0.25f}, {0.2f, 0.25f, 0.0f, 0.5f}},
      {21, 1.0f, {0.2f, 0.0f, 0.0f, 0.25f}, {0.0f, 0.4f, 0.0f, 0.4f},
       {0.2f * 0.65f / 0.55f, 0.3f * 0.65f / 0.55f, 0.0f, 0.65f}},
      {22, 0.5f, {0.4f, 0.0f, 0.0f, 0.5f}, {0.0f, 0.2f, 0.0f, 0.2f},
       {0.2f / 0.45f * 0.25f, 0.2f / 0.45f * 0.25f, 0.0f, 0.25f}},
      {23, 1.0f, {0.0f, 0.0f, 0.0f, 0.25f}, {0.3f, 0.15f, 0.0f, 0.75f}, {0.2f, 0.1f, 0.0f, 0.5f}},
  };
  for (const ModeCase& c : cases) {
    SCOPED_TRACE(c.mode);
    Rgba out{};
    ASSERT_TRUE(blendModeReference(c.mode, c.opacity, c.source, c.frame, out));
    expectNear(out, c.expected);
  }
}

TEST(BlendModeReference, NearlyTransparentSourceIsDiscardedExceptInModeZero) {
  Rgba out{};
  const Rgba faint{0.0005f, 0.0f, 0.0f, 0.0009f};
  EXPECT_TRUE(blendModeReference(0, 1.0f, faint, {}, out));
  for (std::int32_t mode : {1, 5, 12, 20, 23}) EXPECT_FALSE(blendModeReference(mode, 1.0f, faint, {}, out)) << mode;
  EXPECT_TRUE(blendModeReference(1, 1.0f, {0.0f, 0.0f, 0.0f, 0.001f}, {}, out));
}

}  // namespace
}  // namespace Media
