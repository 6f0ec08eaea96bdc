// Gaps on the rows: where a new object lands on a click, closing stretches that became
// empty, removing the gap left of targets, and inserting empty frames at the cursor;
// each shifted object is registered with the undo history before it moves.
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "edit/Object.h"
#include "edit/ObjectPlacement.h"
#include "edit/Scene.h"
#include "edit/UndoRecorder.h"

namespace {

using Edit::Object;
using Edit::ObjectPlacement;
using ObjectPtr = std::shared_ptr<Object>;

// Keeps the objects that were registered for an update, with their start at that time.
class RecordingUndo final : public Edit::UndoRecorder {
 public:
  using Entry = std::pair<const Object*, std::int32_t>;
  void addObjectUpdate(const ObjectPtr& object) override { updates.push_back({object.get(), object->start}); }
  void addObjectCreate(const ObjectPtr&) override {}
  void addObjectDelete(const ObjectPtr&) override {}
  void addObjectSection(const ObjectPtr&) override {}
  void addObjectGroup(const ObjectPtr&) override {}
  void addObjectEffect(const ObjectPtr&) override {}
  void addObjectFlag(const ObjectPtr&) override {}
  void addObjectLayerRange(const ObjectPtr&) override {}
  void addEffectUpdate(const std::shared_ptr<Effect::EffectBase>&) override {}
  void addLayerUpdate(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerMove(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerCreate(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerDelete(const std::shared_ptr<Edit::LayerInfo>&) override {}

  std::vector<Entry> updates;
};
using Updates = std::vector<RecordingUndo::Entry>;

using Span = std::pair<std::int32_t, std::int32_t>;
using Spans = std::vector<Span>;

Spans spansOf(std::initializer_list<ObjectPtr> objects) {
  Spans spans;
  for (const auto& object : objects) spans.push_back({object->start, object->end});
  return spans;
}

class PlacementGapsTest : public ::testing::Test {
 protected:
  ObjectPtr put(std::int32_t layer, std::int32_t start, std::int32_t end) {
    auto object = scene.createEmptyObject(layer, start, end);
    scene.update();
    return object;
  }
  Span newAt(std::int32_t layer, std::int32_t frame) {
    const ObjectPlacement::Frames frames = ObjectPlacement::newObjectFrames(scene, layer, frame);
    return {frames.start, frames.end};
  }

  Edit::Scene scene{0, 0, Edit::SceneDefaults{}};
  RecordingUndo undo;
};

TEST_F(PlacementGapsTest, NewObjectIsEightyPixelsLongUpToTheNextObject) {
  EXPECT_EQ(newAt(0, 5), (Span{5, 85}));
  put(0, 100, 199);
  put(0, 200, 220);
  put(0, 250, 300);
  // From 150 past 100..199 to 200, past 200..220 to 221; the gap before 250 holds 29.
  EXPECT_EQ(newAt(0, 150), (Span{221, 249}));
  // A free frame keeps its place; the length stops before the next object.
  EXPECT_EQ(newAt(0, 50), (Span{50, 99}));
  EXPECT_EQ(newAt(0, 230), (Span{230, 249}));
  // Past the last object the full length is free.
  EXPECT_EQ(newAt(0, 300), (Span{301, 381}));
  scene.setDisplayZoom(20);
  EXPECT_EQ(newAt(3, 0), (Span{0, 40000}));
  scene.setDisplayZoom(100000);
  EXPECT_EQ(newAt(0, 7), (Span{7, 15}));
}

TEST_F(PlacementGapsTest, ClosingShiftsByTheStretchesBeforeAndSkipsRemovedObjects) {
  // Row 0 closes two pairs, given in any order: b between them moves by the first
  // length, c and d behind both by the sum. Row 1 is not listed.
  auto a = put(0, 0, 9);
  auto b = put(0, 20, 29);
  auto c = put(0, 40, 49);
  auto d = put(0, 60, 69);
  auto other = put(1, 20, 29);
  // Row 2: the object of the stretch was removed in this section, still in the row's list.
  auto a2 = put(2, 0, 9);
  auto cut = put(2, 10, 19);
  auto b2 = put(2, 20, 29);
  cut->layer = -1;
  scene.addLayers(2).needsCompaction = true;
  Edit::FrameRangeList ranges;
  ranges[0] = {{30, 39}, {10, 19}};
  ranges[2] = {{10, 19}};
  ObjectPlacement::closeRanges(scene, ranges, &undo);

  EXPECT_EQ(spansOf({a, b, c, d, other}), (Spans{{0, 9}, {10, 19}, {20, 29}, {40, 49}, {20, 29}}));
  EXPECT_EQ(spansOf({a2, cut, b2}), (Spans{{0, 9}, {10, 19}, {10, 19}}));
  EXPECT_EQ(undo.updates, (Updates{{b.get(), 20}, {c.get(), 40}, {d.get(), 60}, {b2.get(), 20}}));
  EXPECT_TRUE(scene.getLayer(0).needsSorting);
}

TEST_F(PlacementGapsTest, RemovingLeftGaps) {
  auto a = put(0, 5, 9);
  auto b = put(0, 20, 29);
  auto c = put(1, 0, 9);
  auto d = put(1, 15, 19);
  auto e = put(2, 0, 3);  // no gap
  for (const auto& object : {a, b, d, e}) {
    object->selected = true;
    scene.selectedObjects.push_back(object);
  }
  ObjectPlacement::removeLeftGaps(scene, scene.selectedObjects, &undo);

  EXPECT_EQ(spansOf({a, b, c, d, e}), (Spans{{0, 4}, {5, 14}, {0, 9}, {10, 14}, {0, 3}}));
  EXPECT_TRUE(scene.selectedObjects.empty());
  EXPECT_FALSE(a->selected);
  EXPECT_EQ(undo.updates, (Updates{{a.get(), 5}, {b.get(), 20}, {d.get(), 15}}));
}

TEST_F(PlacementGapsTest, InsertingEmptyFramesAtTheCursor) {
  auto before = put(0, 0, 9);
  auto across = put(0, 40, 60);
  auto after = put(0, 70, 80);
  auto atCursor = put(2, 50, 55);
  scene.cursorFrame = 50;
  ObjectPlacement::insertEmptyFrames(scene, 100, &undo);
  EXPECT_EQ(spansOf({before, across, after, atCursor}), (Spans{{0, 9}, {40, 60}, {170, 180}, {150, 155}}));
  EXPECT_EQ(undo.updates, (Updates{{after.get(), 70}, {atCursor.get(), 50}}));

  // Nothing or less than nothing inserts nothing.
  undo.updates.clear();
  ObjectPlacement::insertEmptyFrames(scene, 0, &undo);
  ObjectPlacement::insertEmptyFrames(scene, -5, &undo);
  EXPECT_TRUE(undo.updates.empty());
  EXPECT_EQ(spansOf({after}), (Spans{{170, 180}}));
}

TEST_F(PlacementGapsTest, InsertingStopsAtTheLastFrame) {
  auto object = put(0, 2000000000, 2100000000);
  ObjectPlacement::insertEmptyFrames(scene, ObjectPlacement::kMaxInsertLength, nullptr);
  constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max() - 1;
  EXPECT_EQ(spansOf({object}), (Spans{{2000000000 + (kLast - 2100000000), kLast}}));
}

}  // namespace
