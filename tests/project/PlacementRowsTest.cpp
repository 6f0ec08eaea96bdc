// The rows of a scene as whole rows: searching them, clearing, inserting, deleting and
// moving rows, moving an object to another row, and creating an object from a define.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "edit/LayerObjectManager.h"
#include "edit/Object.h"
#include "edit/ObjectFactory.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"
#include "system/Exception.h"

namespace {

using Edit::LayerObjectManager;
using Edit::Object;
using Rows = std::vector<std::vector<const Object*>>;
using Names = std::vector<std::wstring>;

// The living objects of each row, after the rows were brought into order. Every row's
// info knows its own index all along.
Rows living(LayerObjectManager& rows) {
  for (std::int32_t layer = 0; layer < rows.layerCount(); ++layer) {
    EXPECT_EQ(rows.getLayer(layer).info->index, layer) << "row " << layer;
  }
  rows.update();
  Rows result;
  for (std::int32_t layer = 0; layer < rows.layerCount(); ++layer) {
    result.emplace_back();
    for (const auto& object : rows.getLayer(layer).objects) result.back().push_back(object.get());
  }
  return result;
}

Names names(const LayerObjectManager& rows) {
  Names result;
  for (std::int32_t layer = 0; layer < rows.layerCount(); ++layer) result.push_back(rows.getLayer(layer).info->name);
  return result;
}

// Row 0 holds a, row 1 b and row 2 c, each at 0..9; the rows are named as given.
class PlacementRowsTest : public ::testing::Test {
 protected:
  void threeRows(const Names& rowNames) {
    a = rows.createEmptyObject(0, 0, 9);
    b = rows.createEmptyObject(1, 0, 9);
    c = rows.createEmptyObject(2, 0, 9);
    for (std::int32_t layer = 0; layer < 3; ++layer) rows.addLayers(layer).info->name = rowNames.at(layer);
    rows.update();
  }

  LayerObjectManager rows;
  std::shared_ptr<Object> a, b, c;
};

TEST_F(PlacementRowsTest, SearchesAcceptAnyRow) {
  rows.createEmptyObject(0, 10, 19);
  rows.createEmptyObject(0, 30, 39);
  rows.update();
  // Lower: the first object not ending before the frame; upper: the first starting after it.
  for (const auto& [frame, lower, upper] : std::vector<std::tuple<std::int32_t, std::size_t, std::size_t>>{
           {9, 0, 0}, {19, 0, 1}, {20, 1, 1}, {29, 1, 1}, {30, 1, 2}, {40, 2, 2}}) {
    EXPECT_EQ(rows.lowerBound(0, frame), lower) << frame;
    EXPECT_EQ(rows.upperBound(0, frame), upper) << frame;
  }
  EXPECT_EQ(rows.lowerBound(7, 5), 0u);
  EXPECT_EQ(rows.upperBound(-1, 5), 0u);
  EXPECT_EQ(rows.layerCount(), 1);
}

TEST_F(PlacementRowsTest, ClearLeavesOneEmptyRow) {
  auto first = rows.createEmptyObject(0, 0, 9);
  auto far = rows.createEmptyObject(3, 50, 99);
  rows.addLayers(2).info->name = L"Titles";
  rows.update();
  rows.clear();
  EXPECT_EQ(rows.layerCount(), 1);
  EXPECT_TRUE(rows.getLayer(0).objects.empty());
  EXPECT_EQ(names(rows), (Names{L""}));
  EXPECT_EQ(first->layer, -1);
  EXPECT_EQ(far->layer, -1);
  EXPECT_EQ(rows.lastUsedLayer(), 0);
  EXPECT_EQ(rows.lastUsedFrame(), 0);
}

TEST_F(PlacementRowsTest, CreateLayerPushesTheRowsBelowDown) {
  threeRows({L"", L"B", L""});
  const auto infoB = rows.getLayer(1).info;
  rows.createLayer(1);
  EXPECT_EQ(b->layer, 2);
  EXPECT_EQ(c->layer, 3);
  EXPECT_EQ(rows.getLayer(2).info, infoB);
  EXPECT_EQ(living(rows), (Rows{{a.get()}, {}, {b.get()}, {c.get()}}));
  EXPECT_EQ(names(rows), (Names{L"", L"", L"B", L""}));

  // An undo record hands back the info it kept.
  auto kept = std::make_shared<Edit::LayerInfo>();
  kept->name = L"Kept";
  kept->lock = true;
  rows.createLayer(0, kept);
  EXPECT_EQ(rows.getLayer(0).info, kept);
  EXPECT_EQ(a->layer, 1);
  EXPECT_EQ(c->layer, 4);

  // Below the last used row there is nothing to push.
  rows.createLayer(9);
  EXPECT_EQ(rows.layerCount(), 10);
  EXPECT_EQ(c->layer, 4);
  living(rows);
}

TEST_F(PlacementRowsTest, DeleteLayerPullsTheRowsBelowUp) {
  threeRows({L"", L"B", L"C"});
  const auto infoB = rows.getLayer(1).info;
  rows.deleteLayer(1);
  EXPECT_EQ(b->layer, -1);
  EXPECT_EQ(c->layer, 1);
  EXPECT_EQ(living(rows), (Rows{{a.get()}, {c.get()}, {}}));
  // The deleted row's info stays as it was for whoever kept it; the last row starts over.
  EXPECT_EQ(names(rows), (Names{L"", L"C", L""}));
  EXPECT_EQ(infoB->name, L"B");
  EXPECT_NE(rows.getLayer(2).info, infoB);
}

TEST_F(PlacementRowsTest, MoveLayerCarriesObjectsAndInfo) {
  threeRows({L"A", L"", L""});
  rows.moveLayer(0, 2);
  EXPECT_EQ(living(rows), (Rows{{b.get()}, {c.get()}, {a.get()}}));
  EXPECT_EQ(names(rows), (Names{L"", L"", L"A"}));
  rows.moveLayer(2, 0);
  EXPECT_EQ(living(rows), (Rows{{a.get()}, {b.get()}, {c.get()}}));
  rows.moveLayer(-1, 1);
  EXPECT_EQ(living(rows), (Rows{{a.get()}, {b.get()}, {c.get()}}));
}

TEST_F(PlacementRowsTest, MoveLayerKeepsAnObjectThatJustChangedBetweenTheTwoRows) {
  auto first = rows.createEmptyObject(0, 0, 9);
  auto second = rows.createEmptyObject(1, 20, 29);
  rows.update();
  // In the same section: `first` moves to row 1, then rows 0 and 1 trade places. Row 0's
  // list still holds it until its compaction.
  rows.moveObject(first, 1);
  rows.moveLayer(0, 1);
  EXPECT_EQ(first->layer, 0);
  EXPECT_EQ(second->layer, 0);
  EXPECT_EQ(living(rows), (Rows{{first.get(), second.get()}, {}}));
}

TEST_F(PlacementRowsTest, MoveObjectLeavesTheOldRowAtCompaction) {
  auto moved = rows.createEmptyObject(0, 0, 9);
  auto control = rows.createEmptyObject(0, 20, 29);
  control->control = true;
  rows.update();

  rows.moveObject(moved, 3);
  EXPECT_TRUE(rows.getLayer(0).needsCompaction);
  EXPECT_FALSE(rows.getLayer(0).needsControlRebuild);
  EXPECT_TRUE(rows.getLayer(3).needsSorting);
  rows.moveObject(control, 2);
  EXPECT_TRUE(rows.getLayer(0).needsControlRebuild);
  EXPECT_TRUE(rows.getLayer(2).needsControlRebuild);
  EXPECT_EQ(living(rows), (Rows{{}, {}, {control.get()}, {moved.get()}}));
  EXPECT_EQ(rows.getLayer(2).controls.size(), 1u);
  EXPECT_TRUE(rows.getLayer(0).controls.empty());

  // A removed object that comes back before its row was compacted stands there once.
  moved->layer = -1;
  rows.addLayers(3).needsCompaction = true;
  rows.moveObject(moved, 3);
  EXPECT_EQ(living(rows), (Rows{{}, {}, {control.get()}, {moved.get()}}));

  // An object made outside the scene may already name the row it goes to.
  auto outside = std::make_shared<Object>();
  outside->layer = 1;
  rows.moveObject(outside, 1);
  EXPECT_EQ(living(rows), (Rows{{}, {outside.get()}, {control.get()}, {moved.get()}}));
}

class PlacementCreateTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { service = new Effect::EffectService(); }
  static void TearDownTestSuite() { delete std::exchange(service, nullptr); }
  std::shared_ptr<Object> create(const wchar_t* key, std::int32_t layer, std::int32_t start, std::int32_t end) {
    return Edit::ObjectFactory(*service).createObject(rows, service->findEffect(key), layer, start, end);
  }

  static inline Effect::EffectService* service = nullptr;
  LayerObjectManager rows;
};

TEST_F(PlacementCreateTest, CreateObjectTakesTheStoredDefaultsWithTwoKeys) {
  Effect::EffectDefine& blur = service->findEffect(L"ぼかし");
  struct Reset {
    Effect::EffectDefine& define;
    ~Reset() { define.resetDefault(); }
  } reset{blur};
  {
    const auto stored = blur.createInstance();
    auto& range = stored->item<Effect::EffectItemNumber>(L"範囲");
    range.setMovement(Effect::findMovement(L"直線移動"), 2);
    range.setValue(0, 7);
    range.setValue(1, 9);
    blur.saveDefault(*stored);
  }

  const auto object = create(L"ぼかし", 2, 100, 179);
  EXPECT_EQ(object->layer, 2);
  EXPECT_EQ(object->start, 100);
  EXPECT_EQ(object->end, 179);
  EXPECT_TRUE(rows.getLayer(2).needsSorting);
  ASSERT_EQ(object->effects.size(), 1u);
  EXPECT_EQ(object->effects[0]->item<Effect::EffectItemNumber>(L"範囲").values(), (std::vector<std::int32_t>{7, 9}));
  EXPECT_EQ(living(rows).at(2), (std::vector<const Object*>{object.get()}));

  // A drawing object gets the standard draw behind it.
  const auto text = create(L"テキスト", 0, 0, 9);
  ASSERT_EQ(text->effects.size(), 2u);
  EXPECT_EQ(std::wstring(text->effects[1]->name()), L"標準描画");
}

TEST_F(PlacementCreateTest, ControlObjectMarksItsRow) {
  EXPECT_TRUE(create(L"グループ制御", 1, 0, 9)->control);
  EXPECT_TRUE(rows.getLayer(1).needsControlRebuild);
  rows.update();
  EXPECT_EQ(rows.getLayer(1).controls.size(), 1u);
}

TEST_F(PlacementCreateTest, ObjectThatTheChainRulesRefuseLeavesTheRow) {
  auto before = rows.createEmptyObject(0, 0, 9);
  rows.update();
  // An audio output has no input of its own to stand behind.
  EXPECT_THROW(create(L"音声再生", 0, 20, 29), System::NoteException);
  EXPECT_EQ(rows.getLayer(0).objects.size(), 1u);
  EXPECT_EQ(living(rows).at(0), (std::vector<const Object*>{before.get()}));
}

}  // namespace
