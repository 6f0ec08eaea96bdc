// The rows of a scene as whole rows: searching them, clearing, inserting, deleting and
// moving rows, moving an object to another row, and creating an object from a define.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
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

// The living objects of each row, after the rows were brought into order.
Rows living(LayerObjectManager& rows) {
  rows.update();
  Rows result;
  for (std::int32_t layer = 0; layer < rows.layerCount(); ++layer) {
    result.emplace_back();
    for (const auto& object : rows.getLayer(layer).objects) result.back().push_back(object.get());
  }
  return result;
}

void name(LayerObjectManager& rows, std::int32_t layer, const wchar_t* text) {
  rows.addLayers(layer).info->name = text;
}

TEST(PlacementRows, SearchesAcceptAnyRow) {
  LayerObjectManager rows;
  rows.createEmptyObject(0, 10, 19);
  rows.createEmptyObject(0, 30, 39);
  rows.update();
  EXPECT_EQ(rows.lowerBound(0, 19), 0u);
  EXPECT_EQ(rows.lowerBound(0, 20), 1u);
  EXPECT_EQ(rows.lowerBound(0, 40), 2u);
  EXPECT_EQ(rows.upperBound(0, 29), 1u);
  EXPECT_EQ(rows.upperBound(0, 30), 2u);
  EXPECT_EQ(rows.upperBound(0, 9), 0u);
  EXPECT_EQ(rows.lowerBound(7, 5), 0u);
  EXPECT_EQ(rows.upperBound(-1, 5), 0u);
  EXPECT_EQ(rows.layerCount(), 1);
}

TEST(PlacementRows, ClearLeavesOneEmptyRow) {
  LayerObjectManager rows;
  auto first = rows.createEmptyObject(0, 0, 9);
  auto far = rows.createEmptyObject(3, 50, 99);
  name(rows, 2, L"Titles");
  rows.update();
  rows.clear();
  EXPECT_EQ(rows.layerCount(), 1);
  EXPECT_TRUE(rows.getLayer(0).objects.empty());
  EXPECT_EQ(rows.getLayer(0).info->name, L"");
  EXPECT_EQ(first->layer, -1);
  EXPECT_EQ(far->layer, -1);
  EXPECT_EQ(rows.lastUsedLayer(), 0);
  EXPECT_EQ(rows.lastUsedFrame(), 0);
}

TEST(PlacementRows, CreateLayerPushesTheRowsBelowDown) {
  LayerObjectManager rows;
  auto a = rows.createEmptyObject(0, 0, 9);
  auto b = rows.createEmptyObject(1, 0, 9);
  auto c = rows.createEmptyObject(2, 0, 9);
  name(rows, 1, L"B");
  rows.update();
  const auto infoB = rows.getLayer(1).info;

  rows.createLayer(1);
  EXPECT_EQ(living(rows), (Rows{{a.get()}, {}, {b.get()}, {c.get()}}));
  EXPECT_EQ(b->layer, 2);
  EXPECT_EQ(c->layer, 3);
  EXPECT_EQ(rows.getLayer(2).info, infoB);
  EXPECT_EQ(infoB->index, 2);
  EXPECT_EQ(rows.getLayer(1).info->name, L"");
  EXPECT_EQ(rows.getLayer(1).info->index, 1);
  EXPECT_EQ(rows.getLayer(3).info->index, 3);

  // An undo record hands back the info it kept.
  auto kept = std::make_shared<Edit::LayerInfo>();
  kept->name = L"Kept";
  kept->lock = true;
  rows.createLayer(0, kept);
  EXPECT_EQ(rows.getLayer(0).info, kept);
  EXPECT_EQ(kept->index, 0);
  EXPECT_EQ(a->layer, 1);
  EXPECT_EQ(c->layer, 4);

  // Below the last used row there is nothing to push.
  rows.createLayer(9);
  EXPECT_EQ(rows.layerCount(), 10);
  EXPECT_EQ(c->layer, 4);
  EXPECT_EQ(rows.getLayer(9).info->index, 9);
}

TEST(PlacementRows, DeleteLayerPullsTheRowsBelowUp) {
  LayerObjectManager rows;
  auto a = rows.createEmptyObject(0, 0, 9);
  auto b = rows.createEmptyObject(1, 0, 9);
  auto c = rows.createEmptyObject(2, 0, 9);
  name(rows, 1, L"B");
  name(rows, 2, L"C");
  rows.update();
  const auto infoB = rows.getLayer(1).info;

  rows.deleteLayer(1);
  EXPECT_EQ(b->layer, -1);
  EXPECT_EQ(c->layer, 1);
  EXPECT_EQ(living(rows), (Rows{{a.get()}, {c.get()}, {}}));
  EXPECT_EQ(rows.getLayer(1).info->name, L"C");
  EXPECT_EQ(rows.getLayer(1).info->index, 1);
  // The deleted row's info stays as it was for whoever kept it; the last row starts over.
  EXPECT_EQ(infoB->name, L"B");
  EXPECT_NE(rows.getLayer(2).info, infoB);
  EXPECT_EQ(rows.getLayer(2).info->name, L"");
  EXPECT_EQ(rows.getLayer(2).info->index, 2);
}

TEST(PlacementRows, MoveLayerCarriesObjectsAndInfo) {
  LayerObjectManager rows;
  auto a = rows.createEmptyObject(0, 0, 9);
  auto b = rows.createEmptyObject(1, 0, 9);
  auto c = rows.createEmptyObject(2, 0, 9);
  name(rows, 0, L"A");
  rows.update();

  rows.moveLayer(0, 2);
  EXPECT_EQ(living(rows), (Rows{{b.get()}, {c.get()}, {a.get()}}));
  EXPECT_EQ(rows.getLayer(2).info->name, L"A");
  for (std::int32_t layer = 0; layer < 3; ++layer) EXPECT_EQ(rows.getLayer(layer).info->index, layer);

  rows.moveLayer(2, 0);
  EXPECT_EQ(living(rows), (Rows{{a.get()}, {b.get()}, {c.get()}}));
  rows.moveLayer(-1, 1);
  EXPECT_EQ(living(rows), (Rows{{a.get()}, {b.get()}, {c.get()}}));
}

TEST(PlacementRows, MoveLayerKeepsAnObjectThatJustChangedBetweenTheTwoRows) {
  LayerObjectManager rows;
  auto a = rows.createEmptyObject(0, 0, 9);
  auto b = rows.createEmptyObject(1, 20, 29);
  rows.update();
  // In the same section: a moves to row 1, then rows 0 and 1 trade places. Row 0's list
  // still holds a until its compaction.
  rows.moveObject(a, 1);
  rows.moveLayer(0, 1);
  EXPECT_EQ(a->layer, 0);
  EXPECT_EQ(b->layer, 0);
  EXPECT_EQ(living(rows), (Rows{{a.get(), b.get()}, {}}));
}

TEST(PlacementRows, MoveObjectLeavesTheOldRowAtCompaction) {
  LayerObjectManager rows;
  auto a = rows.createEmptyObject(0, 0, 9);
  auto control = rows.createEmptyObject(0, 20, 29);
  control->control = true;
  rows.update();

  rows.moveObject(a, 3);
  EXPECT_TRUE(rows.getLayer(0).needsCompaction);
  EXPECT_FALSE(rows.getLayer(0).needsControlRebuild);
  EXPECT_TRUE(rows.getLayer(3).needsSorting);
  rows.moveObject(control, 2);
  EXPECT_TRUE(rows.getLayer(0).needsControlRebuild);
  EXPECT_TRUE(rows.getLayer(2).needsControlRebuild);
  EXPECT_EQ(living(rows), (Rows{{}, {}, {control.get()}, {a.get()}}));
  EXPECT_EQ(rows.getLayer(2).controls.size(), 1u);
  EXPECT_TRUE(rows.getLayer(0).controls.empty());

  // A removed object that comes back before its row was compacted stands there once.
  a->layer = -1;
  rows.addLayers(3).needsCompaction = true;
  rows.moveObject(a, 3);
  EXPECT_EQ(living(rows), (Rows{{}, {}, {control.get()}, {a.get()}}));

  // An object made outside the scene may already name the row it goes to.
  auto outside = std::make_shared<Object>();
  outside->layer = 1;
  rows.moveObject(outside, 1);
  EXPECT_EQ(living(rows), (Rows{{}, {outside.get()}, {control.get()}, {a.get()}}));
}

class PlacementCreateTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { service = new Effect::EffectService(); }
  static void TearDownTestSuite() {
    delete service;
    service = nullptr;
  }

  static Effect::EffectService* service;
  LayerObjectManager rows;
};

Effect::EffectService* PlacementCreateTest::service = nullptr;

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

  const auto object = Edit::ObjectFactory(*service).createObject(rows, blur, 2, 100, 179);
  EXPECT_EQ(object->layer, 2);
  EXPECT_EQ(object->start, 100);
  EXPECT_EQ(object->end, 179);
  EXPECT_TRUE(rows.getLayer(2).needsSorting);
  ASSERT_EQ(object->effects.size(), 1u);
  EXPECT_EQ(object->effects[0]->item<Effect::EffectItemNumber>(L"範囲").values(), (std::vector<std::int32_t>{7, 9}));
  EXPECT_EQ(living(rows).at(2), (std::vector<const Object*>{object.get()}));

  const auto text = Edit::ObjectFactory(*service).createObject(rows, service->findEffect(L"テキスト"), 0, 0, 9);
  ASSERT_EQ(text->effects.size(), 2u);
  EXPECT_EQ(std::wstring(text->effects[1]->name()), L"標準描画");
}

TEST_F(PlacementCreateTest, ControlObjectMarksItsRow) {
  const auto object = Edit::ObjectFactory(*service).createObject(rows, service->findEffect(L"グループ制御"), 1, 0, 9);
  EXPECT_TRUE(object->control);
  EXPECT_TRUE(rows.getLayer(1).needsControlRebuild);
  rows.update();
  EXPECT_EQ(rows.getLayer(1).controls.size(), 1u);
}

TEST_F(PlacementCreateTest, ObjectThatTheChainRulesRefuseLeavesTheRow) {
  auto before = rows.createEmptyObject(0, 0, 9);
  rows.update();
  // An audio output has no input of its own to stand behind.
  EXPECT_THROW(Edit::ObjectFactory(*service).createObject(rows, service->findEffect(L"音声再生"), 0, 20, 29),
               System::NoteException);
  EXPECT_EQ(rows.getLayer(0).objects.size(), 1u);
  EXPECT_EQ(living(rows).at(0), (std::vector<const Object*>{before.get()}));
}

}  // namespace
