// Separators between docked clients: the hit test and the walk along the line, drags
// with their limits, and the exchange of two clients of one area.
#include <gtest/gtest.h>

#include <algorithm>

#include "WindowTestSupport.h"

namespace {

using namespace TestSupport;
using Window::SeparatorHit;

bool has(const SeparatorHit& hit, const Window::WindowClient& client, bool nearSide) {
  return std::any_of(hit.members.begin(), hit.members.end(), [&](const Window::SeparatorMember& member) {
    return member.client == &client && member.nearSide == nearSide;
  });
}

TEST(Separator, TheWalkCollectsEveryClientAlongAStraightLine) {
  WindowFixture fixture;
  Window::WindowService& service = fixture.service();
  // Between the preview and the object list: the line runs on past the object
  // settings below and the timeline on the near side.
  const auto right = service.hitTestSeparator(800, 100);
  ASSERT_TRUE(right);
  EXPECT_TRUE(right->vertical);
  EXPECT_FLOAT_EQ(right->position, 0.8f);
  ASSERT_EQ(right->members.size(), 4u);
  EXPECT_TRUE(has(*right, fixture.client(kPreview), true));
  EXPECT_TRUE(has(*right, fixture.client(kObjects), false));
  EXPECT_TRUE(has(*right, fixture.client(kSettings), false));
  EXPECT_TRUE(has(*right, fixture.client(kTimeline), true));
  // The left column goes on past the explorer because the scene list below it is of
  // the same area.
  const auto left = service.hitTestSeparator(199, 100);
  ASSERT_TRUE(left);
  EXPECT_EQ(left->members.size(), 4u);
  EXPECT_TRUE(has(*left, fixture.client(kScenes), true));
  // Preview above timeline: at either end the neighbours belong to other areas on both
  // sides, so the walk stops and only the pair moves.
  const auto middle = service.hitTestSeparator(500, 406);
  ASSERT_TRUE(middle);
  EXPECT_FALSE(middle->vertical);
  EXPECT_FLOAT_EQ(middle->position, 0.7f);
  EXPECT_EQ(middle->members.size(), 2u);
  // Inside a client, and where only one client is near, there is none.
  EXPECT_FALSE(service.hitTestSeparator(500, 200));
  EXPECT_FALSE(service.hitTestSeparator(100, 590));
}

TEST(Separator, HoverShowsTheDirectionAndADragMovesEveryMember) {
  WindowFixture fixture;
  FakeWindow& main = fixture.main();
  main.move(199, 100);
  EXPECT_EQ(main.cursor(), Window::CursorShape::SizeWestEast);
  main.move(500, 200);
  EXPECT_EQ(main.cursor(), Window::CursorShape::Arrow);

  main.press(199, 100);
  EXPECT_TRUE(fixture.service().dragging());
  EXPECT_TRUE(main.captured());
  main.move(299, 300);
  // Frames of the moving clients take the focus colour while the drag lasts.
  EXPECT_EQ(main.target().pixel(0, 100), Window::WindowStyle().borderFocus);
  main.release(299, 300);
  EXPECT_FALSE(main.captured());
  // 0.2 + 100 / 1002 of the width.
  EXPECT_EQ(pixels(fixture.client(kExplorer)), (PixelBox{1, 0, 296, 404}));
  EXPECT_EQ(pixels(fixture.client(kScenes)).width, 296);
  EXPECT_EQ(pixels(fixture.client(kPreview)).x, 301);
  EXPECT_EQ(pixels(fixture.client(kTimeline)).x, 301);
  EXPECT_EQ(main.target().pixel(0, 100), Window::WindowStyle().windowBorder);
}

TEST(Separator, ADragStopsShortOfThePushedClientsFarEdge) {
  WindowFixture fixture;
  FakeWindow& main = fixture.main();
  main.drag(800, 100, 100, 100);
  // The preview keeps 24 pixels of the layout: 0.2 + 24 / 1002.
  EXPECT_EQ(pixels(fixture.client(kPreview)).width, 20);
  EXPECT_EQ(pixels(fixture.client(kObjects)).x, 225);
  EXPECT_EQ(pixels(fixture.client(kSettings)).x, 225);
  // The other way the object list is pushed towards the window's edge.
  main.drag(223, 100, 990, 100);
  EXPECT_NEAR(fixture.client(kObjects).fractions().left, 1.0f - 24.0f / 1002.0f, 1e-5f);
}

TEST(Separator, PassingTheFarEdgeExchangesTwoClientsOfOneArea) {
  WindowFixture fixture;
  FakeWindow& main = fixture.main();
  const auto hit = fixture.service().hitTestSeparator(900, 248);
  ASSERT_TRUE(hit);
  ASSERT_EQ(hit->members.size(), 2u);

  main.press(900, 248);
  // Within 24 pixels of the object list's top nothing moves and the cursor says swap.
  main.move(900, 20);
  EXPECT_EQ(main.cursor(), Window::CursorShape::Swap);
  EXPECT_EQ(pixels(fixture.client(kObjects)), (PixelBox{802, 0, 197, 246}));
  // Past it the two exchange their places and the drag goes on.
  main.move(900, -30);
  EXPECT_EQ(pixels(fixture.client(kSettings)), (PixelBox{802, 0, 197, 246}));
  EXPECT_EQ(pixels(fixture.client(kObjects)), (PixelBox{802, 250, 197, 330}));
  EXPECT_TRUE(fixture.service().dragging());
  main.release(900, -30);

  // Downwards past the far edge, with the lower client the last of its area: nothing.
  main.drag(900, 248, 900, 700);
  EXPECT_EQ(pixels(fixture.client(kSettings)), (PixelBox{802, 0, 197, 246}));
  EXPECT_EQ(pixels(fixture.client(kObjects)), (PixelBox{802, 250, 197, 330}));
}

}  // namespace
