#include <gtest/gtest.h>

#include "media/pass/BlendModeReference.h"
#include "media/pass/BlendReference.h"

namespace Media {
namespace {

void expectNear(const Rgba& actual, const Rgba& expected) {
  for (int c = 0; c < 4; ++c) EXPECT_NEAR(actual[c], expected[c], 1e-5f) << "component " << c;
}

struct StateCase {
  std::uint32_t state;
  Rgba src, src1, dst, factor, expected;
};

// Values worked by hand from the factors of each row.
TEST(BlendReference, StatesCombineFactorsPerChannelGroup) {
  const Rgba src{0.2f, 0.4f, 0.1f, 0.5f};
  const Rgba dst{0.6f, 0.3f, 0.8f, 0.75f};
  const Rgba none{};
  const Rgba mask{0.0f, 0.0f, 0.0f, 0.25f};
  const Rgba factor{0.5f, 0.25f, 1.0f, 0.2f};
  const StateCase cases[] = {
      // Source-over: dst * (1 - 0.5).
      {0, src, none, dst, none, {0.5f, 0.55f, 0.5f, 0.875f}},
      // Beneath: src * (1 - 0.75) + dst.
      {1, src, none, dst, none, {0.65f, 0.4f, 0.825f, 0.875f}},
      // No blending writes the source, whatever the target holds.
      {4, src, none, dst, none, src},
      // Dual source: src * (1 - 0.25) + dst * 0.25, and the other way round.
      {5, src, mask, dst, none, {0.3f, 0.375f, 0.275f, 0.5625f}},
      {6, src, mask, dst, none, {0.5f, 0.325f, 0.625f, 0.6875f}},
      // Colour multiplies the target; alpha stays.
      {11, src, none, dst, none, {0.12f, 0.12f, 0.08f, 0.75f}},
      // Blend factor for colour, its alpha for alpha, dst alpha kept by 1 - src alpha.
      {14, src, none, dst, factor, {0.7f, 0.4f, 0.9f, 0.475f}},
      // Max: the larger value of each channel.
      {16, src, none, dst, none, {0.6f, 0.4f, 0.8f, 0.75f}},
      // Cross-fade by the factor: src * k + dst * (1 - k), alpha by k.a.
      {20, src, none, dst, factor, {0.4f, 0.325f, 0.1f, 0.7f}},
      {21, src, none, dst, factor, {0.4f, 0.375f, 0.8f, 0.55f}},
  };
  for (const StateCase& c : cases) {
    SCOPED_TRACE(c.state);
    expectNear(blendReference(kBlendStates[c.state], c.src, c.src1, c.dst, c.factor), c.expected);
  }
}

TEST(BlendReference, MinAndMaxIgnoreTheFactors) {
  BlendStateDesc state = kBlendStates[16];
  state.src = BlendFactor::Zero;
  state.destAlpha = BlendFactor::Zero;
  expectNear(blendReference(state, {0.9f, 0.1f, 0.5f, 0.2f}, {}, {0.3f, 0.7f, 0.5f, 0.6f}, {}),
             {0.9f, 0.7f, 0.5f, 0.6f});
  state.op = BlendOp::Min;
  state.opAlpha = BlendOp::Min;
  expectNear(blendReference(state, {0.9f, 0.1f, 0.5f, 0.2f}, {}, {0.3f, 0.7f, 0.5f, 0.6f}, {}),
             {0.3f, 0.1f, 0.5f, 0.2f});
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

TEST(BlendModeReference, LuminanceAndChromaSwapThroughYuv) {
  // A grey source keeps its luma and takes the frame's chroma; the frame here is pure
  // red at full alpha, whose U and V are -0.169 and 0.5.
  Rgba out{};
  ASSERT_TRUE(blendModeReference(8, 1.0f, {0.5f, 0.5f, 0.5f, 1.0f}, {1.0f, 0.0f, 0.0f, 1.0f}, out));
  expectNear(out, {0.5f + 1.402f * 0.5f, 0.5f + 0.344f * 0.169f - 0.714f * 0.5f, 0.5f - 1.772f * 0.169f, 1.0f});
  ASSERT_TRUE(blendModeReference(9, 1.0f, {0.5f, 0.5f, 0.5f, 1.0f}, {1.0f, 0.0f, 0.0f, 1.0f}, out));
  expectNear(out, {0.299f, 0.299f, 0.299f, 1.0f});
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
