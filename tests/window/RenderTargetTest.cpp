// The counted draw scope, origin and clip stack that every window and control draws
// through, over the recording target.
#include <gtest/gtest.h>

#include <stdexcept>

#include "fakes/RecordingRenderTarget.h"
#include "system/Exception.h"

namespace {

using Media::DrawScope;
using TestSupport::RecordingRenderTarget;

const Media::ColorF kRed{1, 0, 0, 1};

TEST(RenderTarget, NestedScopesShareOnePairAndMoveTheOrigin) {
  RecordingRenderTarget target(100, 80);
  {
    DrawScope outer(target, {10, 10, 90, 70});
    {
      // Relative to the outer scope's origin: absolute (30, 20) to (50, 40).
      DrawScope inner(target, {20, 10, 40, 30}, true);
      target.fillRect({0, 0, 100, 100}, Media::Brush::solid(kRed));
      EXPECT_EQ(target.drawDepth(), 2);
    }
    EXPECT_EQ(target.origin(), (Media::PointF{10, 10}));
    EXPECT_EQ(target.flushes(), 0);
  }
  EXPECT_EQ(target.opens(), 1);
  EXPECT_EQ(target.flushes(), 1);
  EXPECT_EQ(target.origin(), (Media::PointF{0, 0}));
  // The fill was clipped to the inner scope.
  EXPECT_EQ(target.operations().back().clip, (Media::RectF{30, 20, 50, 40}));
  EXPECT_EQ(target.pixel(30, 20), kRed);
  EXPECT_EQ(target.pixel(49, 39), kRed);
  EXPECT_EQ(target.pixel(50, 20).a, 0.0f);
  EXPECT_EQ(target.pixel(29, 20).a, 0.0f);
}

TEST(RenderTarget, AFailedFlushThrowsAndTheCountStartsAgain) {
  RecordingRenderTarget target(10, 10);
  target.failNextFlush();
  target.beginDraw();
  target.beginDraw();
  target.endDraw();
  try {
    target.endDraw();
    FAIL() << "no exception";
  } catch (const System::NoteException& exception) {
    EXPECT_NE(std::string(exception.what()).find("target->EndDraw"), std::string::npos) << exception.what();
    EXPECT_NE(std::string(exception.what()).find("Media::RenderTarget::endDraw"), std::string::npos);
  }
  EXPECT_EQ(target.drawDepth(), 0);
  target.beginDraw();
  EXPECT_EQ(target.opens(), 2);
  target.endDraw();
}

TEST(RenderTarget, AScopeClosesWhenItsPaintThrows) {
  RecordingRenderTarget target(50, 50);
  // The flush fails too, but the paint's own failure is the one that comes out.
  target.failNextFlush();
  EXPECT_THROW(
      {
        DrawScope scope(target, {5, 5, 20, 20});
        throw std::runtime_error("paint failed");
      },
      std::runtime_error);
  EXPECT_EQ(target.drawDepth(), 0);
  EXPECT_EQ(target.origin(), (Media::PointF{0, 0}));
  EXPECT_EQ(target.clip(), (Media::RectF{0, 0, 50, 50}));
}

TEST(RenderTarget, GradientsFollowTheOriginAndCentredTextUsesTheLayoutsExtent) {
  RecordingRenderTarget target(200, 100);
  DrawScope scope(target, {100, 50, 200, 100});
  target.fillRect({0, 0, 10, 10}, Media::Brush::linear(kRed, {0, 0, 1, 1}, {0, 0}, {0, 10}));
  EXPECT_EQ(target.operations().back().rect, (Media::RectF{100, 50, 110, 60}));
  // Fixed advances: 4 characters of 6 pixels in a 20 x 12 line.
  target.drawText(L"abcd", {L"Any", 12.0f}, {0, 0, 40, 20}, Media::Brush::solid(kRed), Media::TextAlignment::Center);
  EXPECT_EQ(target.operations().back().rect, (Media::RectF{108, 54, 132, 66}));
  EXPECT_EQ(target.texts(), std::vector<std::wstring>{L"abcd"});
}

TEST(FixedTextLayout, HitTestsCaretsAndLines) {
  TestSupport::FixedTextLayout layout(L"ab\ncde", 10.0f, 20.0f);
  const auto lines = layout.lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1].start, 3u);
  EXPECT_EQ(lines[1].length, 3u);
  EXPECT_EQ(layout.size().width, 30.0f);
  EXPECT_EQ(layout.size().height, 40.0f);
  const auto hit = layout.hitTestPoint(16.0f, 25.0f);
  EXPECT_EQ(hit.position, 4u);
  EXPECT_TRUE(hit.trailing);
  EXPECT_TRUE(hit.inside);
  EXPECT_FALSE(layout.hitTestPoint(35.0f, 25.0f).inside);
  EXPECT_EQ(layout.caretAt(4, true).x, 20.0f);
  EXPECT_EQ(layout.caretAt(4, true).top, 20.0f);
}

}  // namespace
