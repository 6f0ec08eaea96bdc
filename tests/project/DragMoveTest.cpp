// Moving a selection by drag: where the selection comes to stand when its wanted place is
// taken, across rows, under the Shift lock and at the edges of the timeline.
#include "DragTestSupport.h"
#include "edit/UndoRecorder.h"

namespace {

using DragTestSupport::Selection;
using Edit::DragKind;
using Edit::Object;

// Keeps the objects that a drag registers before it changes them.
class RecordingUndo final : public Edit::UndoRecorder {
 public:
  void addObjectUpdate(const std::shared_ptr<Object>& object) override { updated.push_back(object); }
  void addObjectCreate(const std::shared_ptr<Object>&) override {}
  void addObjectDelete(const std::shared_ptr<Object>&) override {}
  void addObjectSection(const std::shared_ptr<Object>&) override {}
  void addObjectGroup(const std::shared_ptr<Object>&) override {}
  void addObjectEffect(const std::shared_ptr<Object>&) override {}
  void addObjectFlag(const std::shared_ptr<Object>&) override {}
  void addObjectLayerRange(const std::shared_ptr<Object>&) override {}
  void addEffectUpdate(const std::shared_ptr<Effect::EffectBase>&) override {}
  void addLayerUpdate(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerMove(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerCreate(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerDelete(const std::shared_ptr<Edit::LayerInfo>&) override {}

  Selection updated;
};

using DragMoveTest = DragTestSupport::DragFixture;

TEST_F(DragMoveTest, FreePlaceIsTakenAsWanted) {
  auto a = add(0, 10, 19);
  auto b = add(2, 30, 39);
  RecordingUndo undo;
  begin({DragKind::Move, a, 0, 0, 15}, {a, b}, &undo);
  EXPECT_EQ(undo.updated, (Selection{a, b}));
  EXPECT_TRUE(moveTo(0, 45));
  expectAt(*a, 0, 40, 49);
  expectAt(*b, 2, 60, 69);
  EXPECT_EQ(drag.currentFrame, 45);
  EXPECT_FALSE(moveTo(0, 45));
}

TEST_F(DragMoveTest, CollisionGoesToTheNearerSideAndRightOnATie) {
  // The obstacle covers 40..59; the selection is 10 frames long. Left of it the
  // selection fits at 30 (total move 20), right of it at 60 (total move 50). One row a case.
  const struct { std::int32_t wanted, landed; } cases[] = {{34, 30}, {35, 60}, {36, 60}};
  for (std::int32_t row = 0; row < 3; ++row) {
    SCOPED_TRACE(cases[row].wanted);
    add(row, 40, 59);
    auto a = add(row, 10, 19);
    begin({DragKind::Move, a, 0, row, 15}, {a});
    EXPECT_TRUE(moveTo(row, 15 + cases[row].wanted));
    expectAt(*a, row, cases[row].landed, cases[row].landed + 9);
    EXPECT_EQ(drag.currentFrame, 15 + cases[row].landed - 10);
  }
}

TEST_F(DragMoveTest, CollisionJumpsAlongAChainOfObstacles) {
  add(0, 40, 59);
  add(0, 60, 64);
  auto a = add(0, 10, 19);
  begin({DragKind::Move, a, 0, 0, 15}, {a});
  // Wanted start 45. Left: before 40, start 30 (15 away). Right: past 59, then past 64,
  // start 65 (20 away). The left side is nearer.
  EXPECT_TRUE(moveTo(0, 50));
  expectAt(*a, 0, 30, 39);
  EXPECT_EQ(drag.currentFrame, 35);
  // From there the mouse asks for start 62: left 30 is 32 away, right 65 only 3.
  EXPECT_TRUE(moveTo(0, 67));
  expectAt(*a, 0, 65, 74);
}

TEST_F(DragMoveTest, GapInsideTheSelectionOfARowCountsAsOccupied) {
  auto a = add(0, 0, 9);
  add(0, 15, 19);
  auto c = add(0, 30, 39);
  begin({DragKind::Move, a, 0, 0, 5}, {a, c});
  // The span 0..39 shifted by 5 meets the unselected object between the two; the
  // nearest free place is past it, starting at 20.
  EXPECT_TRUE(moveTo(0, 10));
  expectAt(*a, 0, 20, 29);
  expectAt(*c, 0, 50, 59);
}

TEST_F(DragMoveTest, SelectionMovesAcrossRowsTogether) {
  auto a = add(0, 10, 19);
  auto b = add(1, 30, 39);
  begin({DragKind::Move, a, 0, 0, 15}, {a, b});
  EXPECT_TRUE(moveTo(2, 25));
  expectAt(*a, 2, 20, 29);
  expectAt(*b, 3, 40, 49);
  EXPECT_EQ(scene.getLayer(0).objects, Selection{});
  EXPECT_EQ(scene.getLayer(1).objects, Selection{});
  EXPECT_EQ(scene.getLayer(2).objects, Selection{a});
  EXPECT_EQ(scene.getLayer(3).objects, Selection{b});
}

TEST_F(DragMoveTest, NoPlaceInViewFallsBackTowardTheOwnRowAndTheViewSetsTheReach) {
  // Rows 3 and 2 are taken up to frame 1499, past the view's right edge at 999; row 1
  // has room. The frame step comes back whole on the row where the selection comes to rest.
  add(3, 0, 1499);
  add(2, 0, 1499);
  auto a = add(0, 100, 109);
  begin({DragKind::Move, a, 0, 0, 105}, {a});
  EXPECT_TRUE(moveTo(3, 125));
  expectAt(*a, 1, 120, 129);
  EXPECT_EQ(drag.currentLayer, 1);
  EXPECT_EQ(drag.currentFrame, 125);

  // With the view scrolled to 600..1599, the place behind the obstacle is in sight.
  auto b = add(5, 100, 109);
  add(8, 0, 1499);
  scene.displayFrame = 600;
  begin({DragKind::Move, b, 0, 5, 105}, {b});
  EXPECT_TRUE(moveTo(8, 125));
  expectAt(*b, 8, 1500, 1509);
}

TEST_F(DragMoveTest, ShiftLocksRowsOnEqualPixelsElseFrames) {
  auto a = add(0, 100, 109);
  input.shift = true;
  begin({DragKind::Move, a, 0, 0, 100}, {a});
  // 20 frames are 20 pixels, one row is 20 pixels: a tie moves along the frames.
  EXPECT_TRUE(moveTo(1, 120));
  expectAt(*a, 0, 120, 129);
  // 19 pixels against 20: now the row wins and the frames go back to the start.
  EXPECT_TRUE(moveTo(1, 119));
  expectAt(*a, 1, 100, 109);
  EXPECT_EQ(drag.currentLayer, 1);
  EXPECT_EQ(drag.currentFrame, 100);
  // At two pixels a frame, 10 frames already tie with the row.
  scene.setDisplayZoom(20000);
  EXPECT_TRUE(moveTo(1, 110));
  expectAt(*a, 0, 110, 119);
}

TEST_F(DragMoveTest, ClampsAtFrameZeroRowZeroAndTheScrollRange) {
  auto a = add(2, 10, 19);
  auto b = add(3, 5, 14);
  begin({DragKind::Move, a, 0, 2, 15}, {a, b});
  EXPECT_TRUE(moveTo(-1, -10));
  expectAt(*a, 0, 5, 14);
  expectAt(*b, 1, 0, 9);
  EXPECT_EQ(drag.currentLayer, 0);
  EXPECT_EQ(drag.currentFrame, 10);
  // The bottom row of the selection stops at the last row of the scroll range.
  input.maxLayer = 4;
  EXPECT_TRUE(moveTo(9, 10));
  expectAt(*a, 3, 5, 14);
  expectAt(*b, 4, 0, 9);
}

TEST_F(DragMoveTest, SnapsTheStepAndKeepsTheAppliedPosition) {
  add(0, 100, 149);
  auto a = add(1, 0, 19);
  input.snap = true;
  begin({DragKind::Move, a, 0, 1, 10}, {a});
  // End + 1 would stand at 92, 8 frames before the start at 100.
  EXPECT_TRUE(moveTo(1, 82));
  expectAt(*a, 1, 80, 99);
  EXPECT_EQ(drag.currentFrame, 90);
  // Six frames back are pulled back again: nothing moves.
  EXPECT_FALSE(moveTo(1, 84));
  expectAt(*a, 1, 80, 99);
}

TEST_F(DragMoveTest, ControlObjectsRebuildBothRows) {
  auto a = add(0, 10, 19);
  a->control = true;
  begin({DragKind::Move, a, 0, 0, 15}, {a});
  input.layer = 1;
  input.frame = 25;
  ASSERT_TRUE(Edit::ObjectDrag::step(scene, drag, selection, input));
  EXPECT_TRUE(scene.getLayer(0).needsControlRebuild);
  EXPECT_TRUE(scene.getLayer(1).needsControlRebuild);
  scene.update();
  EXPECT_TRUE(scene.getLayer(0).controls.empty());
  ASSERT_EQ(scene.getLayer(1).controls.size(), 1u);
  EXPECT_EQ(scene.getLayer(1).controls.front().start, 20);
  EXPECT_EQ(scene.getLayer(1).controls.front().end, 29);
}

}  // namespace
