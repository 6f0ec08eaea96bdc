// Dragging a section point alone, with the head of its object or with its tail: the
// limits of each mode and where the other points end up.
#include <tuple>

#include "DragTestSupport.h"

namespace {

using Edit::DragKind;
using Edit::Object;
using Edit::SectionMode;
using Offsets = std::vector<std::int32_t>;

class DragSectionPointTest : public DragTestSupport::DragFixture {
 protected:
  // Frames 100 to 199 with points at 120 and 150.
  std::shared_ptr<Object> addSectioned(std::int32_t layer) {
    auto object = add(layer, 100, 199);
    object->sections = {20, 50};
    return object;
  }

  // Grabs `point` at `frame`; with `shift` the Shift key is held on the point's mark.
  void grab(const std::shared_ptr<Object>& object, std::int32_t point, std::int32_t frame, bool shift = false) {
    begin({DragKind::SectionPoint, object, point, object->layer, frame, shift, shift}, {object});
  }

  static void expectObject(const Object& object, std::int32_t start, std::int32_t end, const Offsets& sections) {
    EXPECT_EQ(std::tuple(object.start, object.end, object.sections), std::tuple(start, end, sections));
  }
};

TEST_F(DragSectionPointTest, ShiftOnThePointsMarkChoosesTheModeBySide) {
  auto a = addSectioned(0);
  grab(a, 1, 119, true);
  EXPECT_EQ(drag.sectionMode, SectionMode::Head);
  grab(a, 1, 120, true);
  EXPECT_EQ(drag.sectionMode, SectionMode::Tail);
  grab(a, 1, 119);
  EXPECT_EQ(drag.sectionMode, SectionMode::Point);
  // Shift over the object, but not over the point's own mark.
  begin({DragKind::SectionPoint, a, 1, 0, 119, true, false}, {a});
  EXPECT_EQ(drag.sectionMode, SectionMode::Point);
}

TEST_F(DragSectionPointTest, PlainPointStaysAFrameFromItsNeighboursAndTheEnd) {
  auto a = addSectioned(0);
  grab(a, 1, 120);
  EXPECT_TRUE(moveTo(90));
  expectObject(*a, 100, 199, {1, 50});
  EXPECT_EQ(drag.currentFrame, 101);
  EXPECT_TRUE(moveTo(170));
  expectObject(*a, 100, 199, {49, 50});

  grab(a, 2, 150);
  EXPECT_TRUE(moveTo(260));
  expectObject(*a, 100, 199, {49, 98});
  EXPECT_TRUE(moveTo(100));
  expectObject(*a, 100, 199, {49, 50});
  // Right against the next point: no room to the right at all.
  grab(a, 1, 149);
  EXPECT_FALSE(moveTo(160));
  EXPECT_EQ(drag.currentFrame, 149);
}

TEST_F(DragSectionPointTest, HeadModeMovesTheStartAndLeavesLaterPointsInPlace) {
  add(0, 0, 89);
  auto a = addSectioned(0);
  a->control = true;
  grab(a, 1, 118, true);
  // Down to the previous object's end + 1: the start goes from 100 to 90.
  EXPECT_TRUE(moveTo(88));
  expectObject(*a, 90, 199, {20, 60});
  ASSERT_EQ(scene.getLayer(0).controls.size(), 1u);
  EXPECT_EQ(scene.getLayer(0).controls.front().start, 90);
  // Up to a frame before the next point at 150.
  EXPECT_TRUE(moveTo(150));
  expectObject(*a, 129, 199, {20, 21});

  // The first object of its row may go down to frame 0.
  auto b = addSectioned(1);
  grab(b, 1, 118, true);
  EXPECT_TRUE(moveTo(-100));
  expectObject(*b, 0, 199, {20, 150});
}

TEST_F(DragSectionPointTest, TailModeMovesTheEndAndLaterPointsWithThePoint) {
  auto a = addSectioned(0);
  add(0, 210, 250);
  grab(a, 1, 121, true);
  // Up to the next object's start - 1: the end goes from 199 to 209.
  EXPECT_TRUE(moveTo(151));
  expectObject(*a, 100, 209, {30, 60});

  // Down to a frame after the previous point.
  auto c = addSectioned(1);
  grab(c, 2, 150, true);
  EXPECT_TRUE(moveTo(100));
  expectObject(*c, 100, 170, {20, 21});

  // The last object of its row has no limit to its right.
  auto d = addSectioned(2);
  grab(d, 1, 120, true);
  EXPECT_TRUE(moveTo(1120));
  expectObject(*d, 100, 1199, {1020, 1050});
}

TEST_F(DragSectionPointTest, ActsOnlyOnASingleSelectedObjectAndSnapsThePoint) {
  auto a = addSectioned(0);
  auto b = addSectioned(1);
  grab(a, 1, 120);
  selection = {a, b};
  EXPECT_FALSE(moveTo(130));
  expectObject(*a, 100, 199, {20, 50});

  add(2, 133, 140);
  b->selected = false;
  input.snap = true;
  grab(a, 1, 120);
  EXPECT_TRUE(moveTo(130));
  expectObject(*a, 100, 199, {33, 50});
}

}  // namespace
