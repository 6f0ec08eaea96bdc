// Gaps on the rows: where a new object lands on a click, closing stretches that became
// empty, removing the gap left of targets, and inserting empty frames at the cursor;
// each shifted object is registered with the undo history before it moves.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "edit/Object.h"
#include "edit/ObjectPlacement.h"
#include "edit/Scene.h"
#include "edit/UndoRecorder.h"

namespace {

using Edit::Object;
using Edit::ObjectPlacement;

// Keeps the objects that were registered for an update, with their start at that time.
class RecordingUndo final : public Edit::UndoRecorder {
 public:
  struct Entry {
    const Object* object;
    std::int32_t start;
    bool operator==(const Entry&) const = default;
  };
  void addObjectUpdate(const std::shared_ptr<Object>& object) override {
    updates.push_back({object.get(), object->start});
  }
  void addObjectCreate(const std::shared_ptr<Object>&) override { ++others; }
  void addObjectDelete(const std::shared_ptr<Object>&) override { ++others; }
  void addObjectSection(const std::shared_ptr<Object>&) override { ++others; }
  void addObjectGroup(const std::shared_ptr<Object>&) override { ++others; }
  void addObjectEffect(const std::shared_ptr<Object>&) override { ++others; }
  void addObjectFlag(const std::shared_ptr<Object>&) override { ++others; }
  void addObjectLayerRange(const std::shared_ptr<Object>&) override { ++others; }
  void addEffectUpdate(const std::shared_ptr<Effect::EffectBase>&) override { ++others; }
  void addLayerUpdate(const std::shared_ptr<Edit::LayerInfo>&) override { ++others; }
  void addLayerMove(const std::shared_ptr<Edit::LayerInfo>&) override { ++others; }
  void addLayerCreate(const std::shared_ptr<Edit::LayerInfo>&) override { ++others; }
  void addLayerDelete(const std::shared_ptr<Edit::LayerInfo>&) override { ++others; }

  std::vector<Entry> updates;
  int others = 0;
};

struct Span {
  std::int32_t start;
  std::int32_t end;
  bool operator==(const Span&) const = default;
};

Span spanOf(const Object& object) { return {object.start, object.end}; }
Span spanOf(const ObjectPlacement::Frames& frames) { return {frames.start, frames.end}; }

class PlacementGapsTest : public ::testing::Test {
 protected:
  std::shared_ptr<Object> put(std::int32_t layer, std::int32_t start, std::int32_t end) {
    auto object = scene.createEmptyObject(layer, start, end);
    scene.update();
    return object;
  }

  Edit::Scene scene{0, 0, Edit::SceneDefaults{}};
  RecordingUndo undo;
};

TEST_F(PlacementGapsTest, NewObjectIsEightyPixelsLong) {
  EXPECT_EQ(spanOf(ObjectPlacement::newObjectFrames(scene, 0, 5)), (Span{5, 85}));
  scene.setDisplayZoom(20);
  EXPECT_EQ(spanOf(ObjectPlacement::newObjectFrames(scene, 3, 0)), (Span{0, 40000}));
  scene.setDisplayZoom(100000);
  EXPECT_EQ(spanOf(ObjectPlacement::newObjectFrames(scene, 0, 7)), (Span{7, 15}));
}

TEST_F(PlacementGapsTest, NewObjectOnATakenFrameGoesToTheNextFreeGap) {
  put(0, 100, 199);
  put(0, 200, 220);
  put(0, 250, 300);
  // From 150 past 100..199 to 200, past 200..220 to 221; the gap before 250 holds 29.
  EXPECT_EQ(spanOf(ObjectPlacement::newObjectFrames(scene, 0, 150)), (Span{221, 249}));
  // A free frame keeps its place; the length stops before the next object.
  EXPECT_EQ(spanOf(ObjectPlacement::newObjectFrames(scene, 0, 50)), (Span{50, 99}));
  EXPECT_EQ(spanOf(ObjectPlacement::newObjectFrames(scene, 0, 230)), (Span{230, 249}));
  // Past the last object the full length is free.
  EXPECT_EQ(spanOf(ObjectPlacement::newObjectFrames(scene, 0, 300)), (Span{301, 381}));
}

TEST_F(PlacementGapsTest, ClosingTwoPairsOfOneRow) {
  auto a = put(0, 0, 9);
  auto b = put(0, 20, 29);
  auto c = put(0, 40, 49);
  auto d = put(0, 60, 69);
  auto other = put(1, 20, 29);
  Edit::FrameRangeList ranges;
  ranges[0] = {{30, 39}, {10, 19}};  // in any order
  ObjectPlacement::closeRanges(scene, ranges, &undo);

  EXPECT_EQ(spanOf(*a), (Span{0, 9}));
  EXPECT_EQ(spanOf(*b), (Span{10, 19}));  // between the pairs: the first length
  EXPECT_EQ(spanOf(*c), (Span{20, 29}));  // behind both: the sum
  EXPECT_EQ(spanOf(*d), (Span{40, 49}));
  EXPECT_EQ(spanOf(*other), (Span{20, 29}));
  EXPECT_EQ(undo.updates, (std::vector<RecordingUndo::Entry>{{b.get(), 20}, {c.get(), 40}, {d.get(), 60}}));
  EXPECT_TRUE(scene.getLayer(0).needsSorting);
}

TEST_F(PlacementGapsTest, ClosingSkipsTheRemovedObjectOfTheStretch) {
  auto a = put(0, 0, 9);
  auto cut = put(0, 10, 19);
  auto b = put(0, 20, 29);
  cut->layer = -1;  // removed in this section, still in the row's list
  scene.addLayers(0).needsCompaction = true;
  Edit::FrameRangeList ranges;
  ranges[0] = {{10, 19}};
  ObjectPlacement::closeRanges(scene, ranges, &undo);
  EXPECT_EQ(spanOf(*cut), (Span{10, 19}));
  EXPECT_EQ(spanOf(*b), (Span{10, 19}));
  EXPECT_EQ(undo.updates, (std::vector<RecordingUndo::Entry>{{b.get(), 20}}));
  EXPECT_EQ(spanOf(*a), (Span{0, 9}));
}

TEST_F(PlacementGapsTest, RemovingLeftGaps) {
  auto a = put(0, 5, 9);
  auto b = put(0, 20, 29);
  auto c = put(1, 0, 9);
  auto d = put(1, 15, 19);
  auto e = put(2, 0, 3);
  for (const auto& object : {a, b, d, e}) {
    object->selected = true;
    scene.selectedObjects.push_back(object);
  }
  ObjectPlacement::removeLeftGaps(scene, scene.selectedObjects, &undo);

  EXPECT_EQ(spanOf(*a), (Span{0, 4}));
  EXPECT_EQ(spanOf(*b), (Span{5, 14}));
  EXPECT_EQ(spanOf(*c), (Span{0, 9}));
  EXPECT_EQ(spanOf(*d), (Span{10, 14}));
  EXPECT_EQ(spanOf(*e), (Span{0, 3}));  // no gap
  EXPECT_TRUE(scene.selectedObjects.empty());
  EXPECT_FALSE(a->selected);
  EXPECT_EQ(undo.updates, (std::vector<RecordingUndo::Entry>{{a.get(), 5}, {b.get(), 20}, {d.get(), 15}}));
}

TEST_F(PlacementGapsTest, InsertingEmptyFramesAtTheCursor) {
  auto before = put(0, 0, 9);
  auto across = put(0, 40, 60);
  auto after = put(0, 70, 80);
  auto atCursor = put(2, 50, 55);
  scene.cursorFrame = 50;
  ObjectPlacement::insertEmptyFrames(scene, 100, &undo);
  EXPECT_EQ(spanOf(*before), (Span{0, 9}));
  EXPECT_EQ(spanOf(*across), (Span{40, 60}));
  EXPECT_EQ(spanOf(*after), (Span{170, 180}));
  EXPECT_EQ(spanOf(*atCursor), (Span{150, 155}));
  EXPECT_EQ(undo.updates, (std::vector<RecordingUndo::Entry>{{after.get(), 70}, {atCursor.get(), 50}}));

  undo.updates.clear();
  ObjectPlacement::insertEmptyFrames(scene, 0, &undo);
  ObjectPlacement::insertEmptyFrames(scene, -5, &undo);
  EXPECT_TRUE(undo.updates.empty());
  EXPECT_EQ(spanOf(*after), (Span{170, 180}));
}

TEST_F(PlacementGapsTest, InsertingStopsAtTheLastFrame) {
  auto object = put(0, 2000000000, 2100000000);
  ObjectPlacement::insertEmptyFrames(scene, ObjectPlacement::kMaxInsertLength, nullptr);
  EXPECT_EQ(object->end, std::numeric_limits<std::int32_t>::max() - 1);
  EXPECT_EQ(object->start, 2000000000 + (std::numeric_limits<std::int32_t>::max() - 1 - 2100000000));
}

}  // namespace
