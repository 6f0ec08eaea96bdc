// Resizing an object on its row: its length with or without points, scaling the points
// along, and the length of one section; none of them reaches into a neighbour.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "edit/LayerObjectManager.h"
#include "edit/Object.h"

namespace {

using Edit::LayerObjectManager;
using Edit::Object;
using Offsets = std::vector<std::int32_t>;
using Span = std::pair<std::int32_t, std::int32_t>;

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

TEST_F(PlacementResizeTest, ObjectLengthShrinksAtEitherEndButLeavesAnObjectWithPointsAlone) {
  object->sections = {5};
  rows.setObjectLength(*object, 4, false);
  EXPECT_EQ(spanOf(*object), (Span{10, 19}));
  EXPECT_FALSE(rows.getLayer(0).needsSorting);

  object->sections.clear();
  rows.setObjectLength(*object, 5, false);
  EXPECT_EQ(spanOf(*object), (Span{10, 14}));
  EXPECT_TRUE(rows.getLayer(0).needsSorting);
  rows.setObjectLength(*object, 2, true);
  EXPECT_EQ(spanOf(*object), (Span{13, 14}));
  rows.setObjectLength(*object, 0, false);  // counts as one frame
  EXPECT_EQ(spanOf(*object), (Span{13, 13}));
}

TEST_F(PlacementResizeTest, ObjectLengthGrowsUpToTheNeighbour) {
  rows.setObjectLength(*object, 50, false);
  EXPECT_EQ(spanOf(*object), (Span{10, 29}));
  rows.update();
  rows.setObjectLength(*object, 50, true);
  EXPECT_EQ(spanOf(*object), (Span{5, 29}));

  // The first object of a row grows to frame 0 at most.
  auto first = rows.createEmptyObject(1, 6, 9);
  rows.update();
  rows.setObjectLength(*first, 100, true);
  EXPECT_EQ(spanOf(*first), (Span{0, 9}));
}

TEST(PlacementScale, PointsMoveInProportionAndNoSectionCollapses) {
  const struct {
    Span span;
    Offsets sections;
    std::optional<Span> neighbour;
    std::int32_t length;
    Span scaled;
    Offsets scaledSections;
  } cases[] = {
      // Ratio 49 / 99: 10 -> 4.9 -> 4, 50 -> 24.7 -> 24.
      {{0, 99}, {10, 50}, std::nullopt, 50, {0, 49}, {4, 24}},
      // Wanted end 199, cut to 149 before the next object; ratio 149 / 99: 10 -> 15.05, 50 -> 75.25.
      {{0, 99}, {10, 50}, Span{150, 160}, 200, {0, 149}, {15, 75}},
      // Down to one frame: every section keeps one frame, so the end is 1 + last offset on.
      {{20, 119}, {10, 50}, std::nullopt, 1, {20, 23}, {1, 2}},
      // Without points the last offset counts as 0: two frames at the least, unless the
      // object was one frame long already.
      {{0, 9}, {}, std::nullopt, 1, {0, 1}, {}},
      {{5, 5}, {}, std::nullopt, 1, {5, 5}, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.span.first << ".." << c.span.second << " to " << c.length);
    LayerObjectManager rows;
    auto object = rows.createEmptyObject(0, c.span.first, c.span.second);
    object->sections = c.sections;
    if (c.neighbour) rows.createEmptyObject(0, c.neighbour->first, c.neighbour->second);
    rows.update();
    rows.scaleObject(*object, c.length);
    EXPECT_EQ(spanOf(*object), c.scaled);
    EXPECT_EQ(object->sections, c.scaledSections);
    EXPECT_EQ(rows.getLayer(0).needsSorting, c.scaled != c.span);
  }
}

TEST(PlacementSectionLength, RightPartMovesWithTheEnd) {
  LayerObjectManager rows;
  auto object = rows.createEmptyObject(0, 0, 99);
  object->sections = {10, 50};
  rows.createEmptyObject(0, 120, 130);
  auto plain = rows.createEmptyObject(1, 10, 99);
  rows.update();

  // The middle section, 40 frames, becomes 20.
  rows.changeSectionLength(*object, 1, 20);
  EXPECT_EQ(object->sections, (Offsets{10, 30}));
  EXPECT_EQ(object->end, 79);
  // The last section counts to the end: 10 frames end at 30 + 10.
  rows.changeSectionLength(*object, 2, 10);
  EXPECT_EQ(object->end, 40);
  // Growing the first section stops at the neighbour at 120.
  rows.changeSectionLength(*object, 0, 200);
  EXPECT_EQ(object->sections, (Offsets{89, 109}));
  EXPECT_EQ(object->end, 119);
  // Out of range: nothing.
  rows.changeSectionLength(*object, 3, 5);
  EXPECT_EQ(object->end, 119);

  // Without points the whole object is the section.
  rows.changeSectionLength(*plain, 0, 30);
  EXPECT_EQ(spanOf(*plain), (Span{10, 40}));
}

}  // namespace
