// Moving a selection by drag: where the selection comes to stand when its wanted place is
// taken, across rows, under the Shift lock and at the edges of the timeline.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "edit/DragState.h"
#include "edit/Object.h"
#include "edit/ObjectDrag.h"
#include "edit/Scene.h"
#include "edit/UndoRecorder.h"

namespace {

using Edit::DragInput;
using Edit::DragKind;
using Edit::DragStart;
using Edit::DragState;
using Edit::Object;
using Edit::ObjectDrag;
using Edit::Scene;
using Selection = std::vector<std::shared_ptr<Object>>;

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

class DragMoveTest : public ::testing::Test {
 protected:
  DragMoveTest() : scene(1, 0, Edit::SceneDefaults{}) {
    // One pixel a frame, a view of frames 0 to 999, the cursor out of every snap's reach.
    scene.visibleFrames = 1000;
    scene.cursorFrame = 100000;
    input.snap = false;
    input.layerHeight = 20;
    input.maxLayer = 100;
  }

  std::shared_ptr<Object> add(std::int32_t layer, std::int32_t start, std::int32_t end) {
    auto object = scene.createEmptyObject(layer, start, end);
    scene.update();
    return object;
  }

  void select(const Selection& objects) {
    selection = objects;
    for (const auto& object : objects) object->selected = true;
  }

  void begin(std::int32_t layer, std::int32_t frame) {
    DragStart start;
    start.kind = DragKind::Move;
    start.grabbedObject = selection.front();
    start.layer = layer;
    start.frame = frame;
    drag = ObjectDrag::begin(start, selection, &undo);
  }

  // One mouse move, closed as the edit section would close it.
  bool moveTo(std::int32_t layer, std::int32_t frame) {
    input.layer = layer;
    input.frame = frame;
    const bool moved = ObjectDrag::step(scene, drag, selection, input);
    scene.update();
    return moved;
  }

  static void expectAt(const Object& object, std::int32_t layer, std::int32_t start, std::int32_t end) {
    EXPECT_EQ(object.layer, layer);
    EXPECT_EQ(object.start, start);
    EXPECT_EQ(object.end, end);
  }

  Scene scene;
  Selection selection;
  DragState drag;
  DragInput input;
  RecordingUndo undo;
};

TEST_F(DragMoveTest, FreePlaceIsTakenAsWanted) {
  auto a = add(0, 10, 19);
  auto b = add(2, 30, 39);
  select({a, b});
  begin(0, 15);
  EXPECT_EQ(undo.updated, (Selection{a, b}));
  EXPECT_TRUE(moveTo(0, 45));
  expectAt(*a, 0, 40, 49);
  expectAt(*b, 2, 60, 69);
  EXPECT_EQ(drag.currentFrame, 45);
  EXPECT_FALSE(moveTo(0, 45));
}

TEST_F(DragMoveTest, CollisionGoesToTheNearerSideAndRightOnATie) {
  // The obstacle covers 40..59; the selection is 10 frames long. Left of it the
  // selection fits at 30 (total move 20), right of it at 60 (total move 50).
  const std::int32_t wanted[] = {34, 35, 36};
  const std::int32_t landed[] = {30, 60, 60};
  for (int i = 0; i < 3; ++i) {
    Scene fresh(2, 1, Edit::SceneDefaults{});
    fresh.visibleFrames = 1000;
    fresh.cursorFrame = 100000;
    fresh.createEmptyObject(0, 40, 59);
    auto a = fresh.createEmptyObject(0, 10, 19);
    fresh.update();
    a->selected = true;
    DragState state = ObjectDrag::begin({DragKind::Move, a, 0, 0, 15}, {a}, nullptr);
    input.layer = 0;
    input.frame = 15 + wanted[i];
    EXPECT_TRUE(ObjectDrag::step(fresh, state, {a}, input));
    EXPECT_EQ(a->start, landed[i]) << "wanted a move of " << wanted[i];
    EXPECT_EQ(state.currentFrame, 15 + landed[i] - 10);
  }
}

TEST_F(DragMoveTest, CollisionJumpsAlongAChainOfObstacles) {
  add(0, 40, 59);
  add(0, 60, 64);
  auto a = add(0, 10, 19);
  select({a});
  begin(0, 15);
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
  select({a, c});
  begin(0, 5);
  // The span 0..39 shifted by 5 meets the unselected object between the two; the
  // nearest free place is past it, starting at 20.
  EXPECT_TRUE(moveTo(0, 10));
  expectAt(*a, 0, 20, 29);
  expectAt(*c, 0, 50, 59);
}

TEST_F(DragMoveTest, SelectionMovesAcrossRowsTogether) {
  auto a = add(0, 10, 19);
  auto b = add(1, 30, 39);
  select({a, b});
  begin(0, 15);
  EXPECT_TRUE(moveTo(2, 25));
  expectAt(*a, 2, 20, 29);
  expectAt(*b, 3, 40, 49);
  EXPECT_TRUE(scene.getLayer(0).objects.empty());
  EXPECT_TRUE(scene.getLayer(1).objects.empty());
  ASSERT_EQ(scene.getLayer(2).objects.size(), 1u);
  EXPECT_EQ(scene.getLayer(2).objects.front(), a);
  EXPECT_EQ(scene.getLayer(3).objects.front(), b);
  EXPECT_EQ(drag.currentLayer, 2);
}

TEST_F(DragMoveTest, NoPlaceInViewFallsBackTowardTheOwnRow) {
  // Rows 3 and 2 are taken up to frame 1499, past the view's right edge at 999; row 1
  // has room.
  add(3, 0, 1499);
  add(2, 0, 1499);
  auto a = add(0, 100, 109);
  select({a});
  begin(0, 105);
  // The frame step comes back whole on the row where the selection comes to rest.
  EXPECT_TRUE(moveTo(3, 125));
  expectAt(*a, 1, 120, 129);
  EXPECT_EQ(drag.currentLayer, 1);
  EXPECT_EQ(drag.currentFrame, 125);
}

TEST_F(DragMoveTest, ViewDecidesHowFarTheSearchReaches) {
  add(3, 0, 1499);
  auto a = add(0, 100, 109);
  select({a});
  // With the view scrolled to 600..1599, the place behind the obstacle is in sight.
  scene.displayFrame = 600;
  begin(0, 105);
  EXPECT_TRUE(moveTo(3, 125));
  expectAt(*a, 3, 1500, 1509);
}

TEST_F(DragMoveTest, ShiftLocksRowsOnEqualPixelsElseFrames) {
  auto a = add(0, 100, 109);
  select({a});
  input.shift = true;
  begin(0, 100);
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
  select({a, b});
  begin(2, 15);
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
  select({a});
  input.snap = true;
  begin(1, 10);
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
  select({a});
  begin(0, 15);
  input.layer = 1;
  input.frame = 25;
  ASSERT_TRUE(ObjectDrag::step(scene, drag, selection, input));
  EXPECT_TRUE(scene.getLayer(0).needsControlRebuild);
  EXPECT_TRUE(scene.getLayer(1).needsControlRebuild);
  scene.update();
  EXPECT_TRUE(scene.getLayer(0).controls.empty());
  ASSERT_EQ(scene.getLayer(1).controls.size(), 1u);
  EXPECT_EQ(scene.getLayer(1).controls.front().start, 20);
  EXPECT_EQ(scene.getLayer(1).controls.front().end, 29);
}

}  // namespace
