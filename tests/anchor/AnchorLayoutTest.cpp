#include "anchor/AnchorLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

using Anchor::AnchorItem;
using Anchor::AnchorList;
using Anchor::Point;

// A picture of 200 by 100 pixels whose centre stands at (200, 100).
constexpr Anchor::PictureRect kPicture{100, 50, 300, 150};

AnchorItem item(std::int32_t kind, std::vector<Point> points, std::uint32_t code = 0) {
  AnchorItem made;
  made.kind = kind;
  made.points = std::move(points);
  made.code = code;
  return made;
}

void expectPoint(const Point& actual, float x, float y) {
  EXPECT_NEAR(actual.first, x, 1e-3);
  EXPECT_NEAR(actual.second, y, 1e-3);
}

TEST(AnchorLayout, PointsMapIntoThePictureAndSmallHandlesStayUsable) {
  AnchorList items{item(6, {{0, 0}, {1, 1}, {-1, -1}}),
                   item(4, {{0, 0}, {0.5f, 0}, {0.1f, 0}}),   // the reference 10 pixels out
                   item(5, {{0, 0}, {0.1f, 0}, {0, 0}}),      // 10 pixels from its second point
                   item(9, {{-0.5f, 0}, {0.5f, 0}})};         // a line: too thin to aim at
  Anchor::layoutAnchors(items, kPicture, 400);
  expectPoint(items[0].screenPoints[0], 200, 100);
  expectPoint(items[0].screenPoints[1], 300, 50);
  expectPoint(items[0].screenPoints[2], 100, 150);
  // The axis handle's end falls one pixel per pixel of the reference: 50 / 10 = 5 pixels.
  expectPoint(items[1].screenPoints[1], 205, 100);
  EXPECT_NEAR(items[1].handleScale[0], 8.0f, 1e-4);
  // Half the shortfall of 16: 3 pixels away from the second point.
  expectPoint(items[2].screenPoints[0], 197, 100);
  // The line becomes a rectangle along it, 16 pixels across.
  ASSERT_EQ(items[3].screenPoints.size(), 4u);
  EXPECT_TRUE(Anchor::hits(items[3], 240, 107));
  EXPECT_FALSE(Anchor::hits(items[3], 240, 109));
  EXPECT_NEAR(items[3].radius, std::hypot(50.0f, 8.0f), 1e-3);
}

TEST(AnchorLayout, CornerIconsStackDownTheRightEdge) {
  AnchorList items{item(1, {{32, 32}}), item(1, {{20, 10}})};
  for (AnchorItem& icon : items) icon.flags = Anchor::kCornerIconFlag;
  Anchor::layoutAnchors(items, Anchor::PictureRect{-50, -20, 500, 300}, 400);
  expectPoint(items[0].screenPoints[0], 368, 0);
  expectPoint(items[0].screenPoints[1], 400, 32);
  expectPoint(items[1].screenPoints[0], 380, 32);
  EXPECT_TRUE(Anchor::hits(items[1], 390, 40));
}

TEST(AnchorLayout, TheHitTestPrefersSmallKindsNearCentresTheFocusAndLowCodes) {
  const auto focus = std::shared_ptr<Edit::Object>(reinterpret_cast<Edit::Object*>(0x10), [](Edit::Object*) {});
  AnchorList items{item(8, {{0, 0}}, 1), item(7, {{0.1f, 0}}, 2), item(7, {{0.05f, 0}}, 3),
                   item(7, {{0.05f, 0}}, 4), item(7, {{0.05f, 0}}, 5), item(6, {{0, 0}}, 6)};
  items[5].flags = Anchor::kNotHitFlag;
  items[4].object = focus;
  Anchor::layoutAnchors(items, kPicture, 400);
  // At (206, 100): every circle holds it; kind 6 may not be hit, kind 7 beats 8, the
  // nearer centres win, and of the two equal ones the focus object's.
  EXPECT_EQ(Anchor::hitTest(items, 206, 100, focus.get())->code, 5u);
  EXPECT_EQ(Anchor::hitTest(items, 206, 100, nullptr)->code, 3u);
  EXPECT_EQ(Anchor::hitTest(items, 230, 100, nullptr)->code, 1u);  // only the big circle reaches
  EXPECT_EQ(Anchor::hitTest(items, 200, 10, nullptr), nullptr);
}

}  // namespace
