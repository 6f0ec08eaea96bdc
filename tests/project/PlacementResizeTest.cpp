// Resizing an object on its row: its length with or without points, scaling the points
// along, and the length of one section; none of them reaches into a neighbour.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "edit/LayerObjectManager.h"
#include "edit/Object.h"

namespace {

using Edit::LayerObjectManager;
using Edit::Object;
using Offsets = std::vector<std::int32_t>;

struct Span {
  std::int32_t start;
  std::int32_t end;
  bool operator==(const Span&) const = default;
};

Span spanOf(const Object& object) { return {object.start, object.end}; }

class PlacementResizeTest : public ::testing::Test {
 protected:
  // Row 0: a neighbour at 0..4, the object at 10..19, a neighbour at 30..39.
  PlacementResizeTest() {
    rows.createEmptyObject(0, 0, 4);
    object = rows.createEmptyObject(0, 10, 19);
    rows.createEmptyObject(0, 30, 39);
    rows.update();
  }

  LayerObjectManager rows;
  std::shared_ptr<Object> object;
};

TEST_F(PlacementResizeTest, ObjectLengthShrinksAtEitherEnd) {
  rows.setObjectLength(*object, 5, false);
  EXPECT_EQ(spanOf(*object), (Span{10, 14}));
  EXPECT_TRUE(rows.getLayer(0).needsSorting);
  rows.setObjectLength(*object, 2, true);
  EXPECT_EQ(spanOf(*object), (Span{13, 14}));
  // Length 0 counts as one frame.
  rows.setObjectLength(*object, 0, false);
  EXPECT_EQ(spanOf(*object), (Span{13, 13}));
}

TEST_F(PlacementResizeTest, ObjectLengthGrowsUpToTheNeighbour) {
  rows.setObjectLength(*object, 50, false);
  EXPECT_EQ(spanOf(*object), (Span{10, 29}));
  rows.update();
  rows.setObjectLength(*object, 50, true);
  EXPECT_EQ(spanOf(*object), (Span{5, 29}));

  // The first object of a row grows to frame 0 at most.
  LayerObjectManager lone;
  auto first = lone.createEmptyObject(0, 6, 9);
  lone.update();
  lone.setObjectLength(*first, 100, true);
  EXPECT_EQ(spanOf(*first), (Span{0, 9}));
}

TEST_F(PlacementResizeTest, ObjectLengthLeavesAnObjectWithPointsAlone) {
  object->sections = {5};
  rows.setObjectLength(*object, 4, false);
  EXPECT_EQ(spanOf(*object), (Span{10, 19}));
  EXPECT_FALSE(rows.getLayer(0).needsSorting);
}

TEST(PlacementScale, PointsMoveInProportion) {
  LayerObjectManager rows;
  auto object = rows.createEmptyObject(0, 0, 99);
  object->sections = {10, 50};
  rows.update();
  // ratio 49 / 99: 10 -> 4.9 -> 4, 50 -> 24.7 -> 24.
  rows.scaleObject(*object, 50);
  EXPECT_EQ(spanOf(*object), (Span{0, 49}));
  EXPECT_EQ(object->sections, (Offsets{4, 24}));
  EXPECT_TRUE(rows.getLayer(0).needsSorting);
}

TEST(PlacementScale, GrowingStopsAtTheNextObject) {
  LayerObjectManager rows;
  auto object = rows.createEmptyObject(0, 0, 99);
  object->sections = {10, 50};
  rows.createEmptyObject(0, 150, 160);
  rows.update();
  // Wanted end 199, cut to 149; ratio 149 / 99: 10 -> 15.05, 50 -> 75.25.
  rows.scaleObject(*object, 200);
  EXPECT_EQ(spanOf(*object), (Span{0, 149}));
  EXPECT_EQ(object->sections, (Offsets{15, 75}));
}

TEST(PlacementScale, NoSectionCollapses) {
  LayerObjectManager rows;
  auto object = rows.createEmptyObject(0, 20, 119);
  object->sections = {10, 50};
  rows.update();
  // Down to one frame: every section keeps one frame, so the end is 1 + last offset on.
  rows.scaleObject(*object, 1);
  EXPECT_EQ(object->sections, (Offsets{1, 2}));
  EXPECT_EQ(spanOf(*object), (Span{20, 23}));
  for (std::int32_t i = 0; i < 3; ++i) EXPECT_EQ(object->sectionLength(i), 1) << i;

  // Without points the last offset counts as 0: two frames at the least, unless the
  // object was one frame long already.
  auto plain = rows.createEmptyObject(1, 0, 9);
  rows.update();
  rows.scaleObject(*plain, 1);
  EXPECT_EQ(spanOf(*plain), (Span{0, 1}));
  auto single = rows.createEmptyObject(2, 5, 5);
  rows.update();
  rows.scaleObject(*single, 1);
  EXPECT_EQ(spanOf(*single), (Span{5, 5}));
  EXPECT_FALSE(rows.getLayer(2).needsSorting);
}

TEST(PlacementSectionLength, RightPartMovesWithTheEnd) {
  LayerObjectManager rows;
  auto object = rows.createEmptyObject(0, 0, 99);
  object->sections = {10, 50};
  rows.createEmptyObject(0, 120, 130);
  rows.update();

  // The middle section, 40 frames, becomes 20.
  rows.changeSectionLength(*object, 1, 20);
  EXPECT_EQ(object->sections, (Offsets{10, 30}));
  EXPECT_EQ(object->end, 79);
  // The last section counts to the end: 10 frames end at 30 + 10.
  rows.changeSectionLength(*object, 2, 10);
  EXPECT_EQ(object->end, 40);
  EXPECT_EQ(object->sectionLength(2), 10);
  // Growing the first section stops at the neighbour at 120.
  rows.changeSectionLength(*object, 0, 200);
  EXPECT_EQ(object->sections, (Offsets{89, 109}));
  EXPECT_EQ(object->end, 119);
  // Out of range: nothing.
  rows.changeSectionLength(*object, 3, 5);
  EXPECT_EQ(object->end, 119);
}

TEST(PlacementSectionLength, WithoutPointsTheWholeObjectIsTheSection) {
  LayerObjectManager rows;
  auto object = rows.createEmptyObject(0, 10, 99);
  rows.update();
  rows.changeSectionLength(*object, 0, 30);
  EXPECT_EQ(spanOf(*object), (Span{10, 40}));
}

}  // namespace
