// Copies of objects and where they land again: pasting at a place moves right until
// every row is free, the keyboard paste and duplicates move down, and the pasted
// objects form groups of their own. Each new object is registered with the undo history.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include "edit/Clipboard.h"
#include "edit/Group.h"
#include "edit/Object.h"
#include "edit/ObjectFactory.h"
#include "edit/ObjectPaste.h"
#include "edit/Scene.h"
#include "edit/SelectionExtent.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"

namespace {

using Edit::Object;
using ObjectPtr = std::shared_ptr<Object>;
using Objects = std::vector<ObjectPtr>;
// Layer, start and end.
using Places = std::vector<std::tuple<std::int32_t, std::int32_t, std::int32_t>>;

// Keeps the objects registered as created and as changing group, in order.
class RecordingUndo final : public Edit::UndoRecorder {
 public:
  void addObjectUpdate(const ObjectPtr&) override {}
  void addObjectCreate(const ObjectPtr& object) override { created.push_back(object); }
  void addObjectDelete(const ObjectPtr&) override {}
  void addObjectSection(const ObjectPtr&) override {}
  void addObjectGroup(const ObjectPtr& object) override { grouped.push_back(object); }
  void addObjectEffect(const ObjectPtr&) override {}
  void addObjectFlag(const ObjectPtr&) override {}
  void addObjectLayerRange(const ObjectPtr&) override {}
  void addEffectUpdate(const std::shared_ptr<Effect::EffectBase>&) override {}
  void addLayerUpdate(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerMove(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerCreate(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerDelete(const std::shared_ptr<Edit::LayerInfo>&) override {}

  Objects created;
  Objects grouped;
};

Places placesOf(const Objects& objects) {
  Places places;
  for (const auto& object : objects) places.emplace_back(object->layer, object->start, object->end);
  return places;
}

Effect::EffectItemNumber& sizeOf(const Object& object) {
  return object.effects[0]->item<Effect::EffectItemNumber>(L"サイズ");
}

class PasteTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { service = new Effect::EffectService(); }
  static void TearDownTestSuite() { delete std::exchange(service, nullptr); }

  // A text object, the rows brought into order.
  ObjectPtr put(std::int32_t layer, std::int32_t start, std::int32_t end) {
    auto object = factory().createObject(scene, service->findEffect(L"テキスト"), layer, start, end);
    scene.update();
    return object;
  }
  // Copies of objects as copy and cut make them; the originals leave the scene.
  Objects copiesOf(const Objects& originals) {
    Objects copies = factory().copyObjects(originals);
    for (const auto& original : originals) {
      scene.addLayers(original->layer).needsCompaction = true;
      original->layer = -1;
    }
    scene.update();
    return copies;
  }
  Edit::ObjectFactory factory() { return Edit::ObjectFactory(*service); }
  Edit::ObjectPaste paste() { return Edit::ObjectPaste(scene, *service, &undo); }

  static inline Effect::EffectService* service = nullptr;
  Edit::Scene scene{0, 0, Edit::SceneDefaults{}};
  RecordingUndo undo;
};

TEST_F(PasteTest, CopyIsANewObjectOutsideItsGroupWithEffectsOfItsOwn) {
  auto original = put(2, 10, 19);
  original->sections = {4};
  original->clipping = true;
  original->camera = false;
  auto group = std::make_shared<Edit::Group>();
  Edit::Group::join(group, *original);

  const auto copy = factory().copyObject(*original);
  EXPECT_NE(copy->id(), original->id());
  EXPECT_EQ(placesOf({copy}), (Places{{2, 10, 19}}));
  EXPECT_EQ(copy->sections, std::vector<std::int32_t>{4});
  EXPECT_TRUE(copy->clipping);
  EXPECT_FALSE(copy->camera);
  EXPECT_EQ(copy->group, group);
  EXPECT_EQ(group->size(), 1u);                     // the copy is no member
  EXPECT_EQ(scene.getLayer(2).objects.size(), 1u);  // nor does the scene know it

  // Copy and paste each take fresh effects with the values of the moment.
  sizeOf(*original).setValue(0, 77);
  const auto later = factory().copyObject(*original);
  sizeOf(*original).setValue(0, 12);
  const Objects placed = paste().pasteAt({later}, 0, 50, false);
  EXPECT_EQ(sizeOf(*placed[0]).getValue(0), 77);
  sizeOf(*placed[0]).setValue(0, 5);
  EXPECT_EQ(sizeOf(*later).getValue(0), 77);
  EXPECT_EQ(placed[0]->effects.size(), 2u);
}

TEST_F(PasteTest, PasteMeetingAChainLandsAfterTheLastObjectItMeets) {
  const Objects copies = copiesOf({put(0, 0, 9)});
  put(0, 5, 20);
  put(0, 21, 25);
  put(0, 30, 40);
  // The gap 26..29 is too short for ten frames.
  const Objects placed = paste().pasteAt(copies, 0, 0, false);
  EXPECT_EQ(placesOf(placed), (Places{{0, 41, 50}}));
  EXPECT_EQ(undo.created, placed);
}

TEST_F(PasteTest, PasteTakesAGapLongEnough) {
  const Objects copies = copiesOf({put(0, 0, 9)});
  put(0, 5, 20);
  put(0, 31, 40);
  EXPECT_EQ(placesOf(paste().pasteAt(copies, 0, 0, false)), (Places{{0, 21, 30}}));
  // A free place is taken as it is, on any row.
  EXPECT_EQ(placesOf(paste().pasteAt(copies, 4, 100, false)), (Places{{4, 100, 109}}));
}

TEST_F(PasteTest, PasteMovesAllRowsUntilEachIsFree) {
  const Objects copies = copiesOf({put(0, 0, 9), put(1, 5, 14)});
  put(3, 10, 30);
  // Row 2 is free at 0..9, but row 3 meets 10..30 at 5..14: both move 26 frames.
  const Objects placed = paste().pasteAt(copies, 2, 0, true);
  EXPECT_EQ(placesOf(placed), (Places{{2, 26, 35}, {3, 31, 40}}));
  EXPECT_EQ(scene.focusObject, placed.front());
  EXPECT_EQ(undo.created, placed);
  EXPECT_TRUE(undo.grouped.empty());
}

TEST_F(PasteTest, PastedObjectsFormGroupsOfTheirOwn) {
  auto a = put(0, 0, 9);
  auto b = put(1, 0, 9);
  auto c = put(2, 0, 9);
  auto d = put(3, 0, 9);
  auto first = std::make_shared<Edit::Group>();
  auto second = std::make_shared<Edit::Group>();
  Edit::Group::join(first, *a);
  Edit::Group::join(first, *b);
  Edit::Group::join(second, *c);
  const Objects copies = factory().copyObjects({a, b, c, d});

  const Objects placed = paste().pasteAt(copies, 0, 100, false);
  EXPECT_EQ(placesOf(placed), (Places{{0, 100, 109}, {1, 100, 109}, {2, 100, 109}, {3, 100, 109}}));
  ASSERT_TRUE(placed[0]->group);
  EXPECT_EQ(placed[0]->group, placed[1]->group);
  EXPECT_NE(placed[0]->group, first);
  ASSERT_TRUE(placed[2]->group);
  EXPECT_NE(placed[2]->group, placed[0]->group);
  EXPECT_NE(placed[2]->group, second);
  EXPECT_FALSE(placed[3]->group);
  EXPECT_EQ(placed[0]->group->size(), 2u);
  EXPECT_EQ(first->size(), 2u);
  EXPECT_EQ(second->size(), 1u);
  EXPECT_EQ(undo.grouped, (Objects{placed[0], placed[1], placed[2]}));
  EXPECT_EQ(scene.focusObject, nullptr);

  // The copies stay for the next paste, which forms yet other groups.
  scene.update();
  const Objects again = paste().pasteAt(copies, 0, 100, false);
  EXPECT_EQ(placesOf(again), (Places{{0, 110, 119}, {1, 110, 119}, {2, 110, 119}, {3, 110, 119}}));
  EXPECT_NE(again[0]->group, placed[0]->group);
}

TEST_F(PasteTest, IsFreeStepsOneRowDownOnACollision) {
  put(1, 0, 9);
  const Edit::SelectionExtent extent = Edit::SelectionExtent::of(copiesOf({put(0, 20, 29)}));
  std::int32_t dl = 1;
  EXPECT_FALSE(paste().isFree(extent, -15, dl));  // 5..14 meets 0..9 on row 1
  EXPECT_EQ(dl, 2);
  EXPECT_TRUE(paste().isFree(extent, -15, dl));
  EXPECT_EQ(dl, 2);
  dl = 1;
  EXPECT_TRUE(paste().isFree(extent, -10, dl));  // 10..19 just after it
}

TEST_F(PasteTest, KeyboardPasteGoesDownAtTheCursor) {
  Edit::Clipboard clipboard;
  clipboard.set(copiesOf({put(2, 100, 109)}));
  put(2, 500, 520);
  const auto pasteAtCursor = [&](std::int32_t cursor) {
    scene.cursorFrame = cursor;
    const Places places = placesOf(paste().pasteObject(clipboard, std::nullopt, false));
    scene.update();
    return places;
  };
  // The cursor lies outside the copies' frames: the paste starts there, on their own
  // row, and goes one row down from the object at 500.
  EXPECT_EQ(pasteAtCursor(500), (Places{{3, 500, 509}}));
  // Inside their frames the copies keep their frames.
  EXPECT_EQ(pasteAtCursor(105), (Places{{2, 100, 109}}));
  // Under the mouse, floored at row 0 and frame 0, then right until free.
  EXPECT_EQ(placesOf(paste().pasteObject(clipboard, Edit::ObjectPaste::Position{-3, -40}, false)), (Places{{0, 0, 9}}));
  EXPECT_TRUE(paste().pasteObject(Edit::Clipboard{}, std::nullopt, false).empty());
}

TEST_F(PasteTest, DuplicateLandsBelowTheSelection) {
  auto a = put(0, 0, 9);
  auto b = put(1, 5, 14);
  put(3, 10, 10);
  // One row down a's copy meets b; two rows down b's copy meets frame 10 of row 3; three
  // rows down a's copy ends just before it.
  const Objects placed = paste().duplicateObject({a, b}, true);
  EXPECT_EQ(placesOf(placed), (Places{{3, 0, 9}, {4, 5, 14}}));
  EXPECT_EQ(scene.focusObject, placed.front());
  EXPECT_EQ(undo.created, placed);
  EXPECT_EQ(placesOf({a}), (Places{{0, 0, 9}}));
}

}  // namespace
