// Every kind of undo state: an edit recorded as one action, taken back by undo and
// applied again by redo, compared through the project's canonical text; and what the
// comparison at the end of an action keeps of a state.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Group.h"
#include "edit/Object.h"
#include "edit/ObjectUndoStates.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectService.h"
#include "effect/EffectUndoUpdate.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemText.h"
#include "effect/item/ItemRow.h"
#include "system/Exception.h"
#include "undo/UndoItemTemplate.h"
#include "undo/UndoService.h"

namespace {

using Edit::Object;
using Edit::UndoRecorder;
using Effect::EffectItemNumber;
using Request = Edit::EditSection::Request;

// An effect whose list of items can grow, as a script's can when its file changes.
constexpr Effect::ItemRow kGrowingItems[] = {Effect::number(L"強さ", 50, 0, 100, 1)};

class GrowingEffect final : public Effect::EffectInstance<GrowingEffect> {
 public:
  static const Effect::EffectInfo kInfo;
  GrowingEffect() : EffectInstance(kInfo) {}
  void grow() { mutableItems().push_back(std::make_unique<EffectItemNumber>(L"追加", 0, 0, 10, 1)); }
};

const Effect::EffectInfo GrowingEffect::kInfo{
    L"伸びる効果", Effect::EffectType::Filter, Effect::EffectMedia::Video, Effect::EffectMedia::Video, L"",
    kGrowingItems};

::testing::AssertionResult throwsNote(const std::function<void()>& call, const std::string& place) {
  try {
    call();
  } catch (const System::NoteException& exception) {
    if (exception.message() != "different number of items.") {
      return ::testing::AssertionFailure() << "threw \"" << exception.message() << '"';
    }
    if (exception.text().find("[Place]\n" + place + "()") == std::string::npos) {
      return ::testing::AssertionFailure() << "wrong place in: " << exception.text();
    }
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << "nothing thrown";
}

class UndoStatesTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { effects = new Effect::EffectService(); }
  static void TearDownTestSuite() {
    delete effects;
    effects = nullptr;
  }

  Edit::Scene& scene() { return *edit.currentScene(); }
  std::string text() const { return Edit::ProjectFile::write(edit.project()); }

  // An object with a chain made through the menu path, outside any record.
  std::shared_ptr<Object> place(std::int32_t layer, std::int32_t start, std::int32_t end,
                                std::initializer_list<const wchar_t*> keys) {
    Edit::EditSection section(edit);
    section.request(Request::Update);
    auto object = scene().createEmptyObject(layer, start, end);
    for (const wchar_t* key : keys) Edit::EffectManager(*object, *effects).addEffect(key);
    return object;
  }

  // Runs `change` as one recorded action; undo must give back the text from before it
  // and redo the text from after it.
  template <class Change>
  void expectUndoRedo(Change&& change) {
    const std::string before = text();
    {
      Edit::EditSection section(edit);
      section.request(Request::Update);
      change(*section.recordUndo());
    }
    const std::string after = text();
    ASSERT_NE(after, before) << "the action changed nothing";
    ASSERT_TRUE(history.canUndo());
    history.undo();
    EXPECT_EQ(text(), before);
    history.redo();
    EXPECT_EQ(text(), after);
  }

  static Effect::EffectService* effects;
  Edit::EditService edit;
  Undo::UndoService history{edit};
};

Effect::EffectService* UndoStatesTest::effects = nullptr;

TEST_F(UndoStatesTest, ObjectUpdateMovesTheObjectBetweenRows) {
  const auto moved = place(0, 0, 29, {L"図形"});
  const auto other = place(2, 40, 59, {L"図形"});
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectUpdate(moved);
    undo.addObjectUpdate(other);  // registered, never changed: dropped at the end
    scene().moveObject(moved, 2);
    moved->start = 5;
    moved->end = 35;
  });
  // Redone: the rows are compacted and sorted again.
  EXPECT_TRUE(scene().getLayer(0).objects.empty());
  EXPECT_EQ(scene().getLayer(2).objects, (std::vector<std::shared_ptr<Object>>{moved, other}));
}

TEST_F(UndoStatesTest, ObjectUpdateKeepsSectionPointsOnlyWhenTheyShift) {
  const auto object = place(0, 0, 59, {L"図形"});
  object->sections = {10, 20};

  // Cutting 5 frames off the left shifts every point by 5.
  Undo::UndoItemTemplate<Object, Edit::ObjectUndoUpdate> cut(object);
  object->start = 5;
  object->sections = {5, 15};
  EXPECT_TRUE(cut.commit());
  EXPECT_EQ(cut.before().sections, (std::vector<std::int32_t>{10, 20}));

  // A plain move leaves the points where they are relative to the start.
  Undo::UndoItemTemplate<Object, Edit::ObjectUndoUpdate> move(object);
  object->start += 100;
  object->end += 100;
  EXPECT_TRUE(move.commit());
  EXPECT_TRUE(move.before().sections.empty());
  EXPECT_TRUE(move.after().sections.empty());

  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectUpdate(object);
    object->start += 5;
    object->sections = {5, 15};
  });
}

TEST_F(UndoStatesTest, CreatedObjectLeavesTheSceneAndTheSelection) {
  std::shared_ptr<Object> created;
  expectUndoRedo([&](UndoRecorder& undo) {
    created = scene().createEmptyObject(1, 10, 19);
    Edit::EffectManager(*created, *effects).addEffect(L"図形");
    undo.addObjectCreate(created);
  });
  EXPECT_EQ(scene().objectAt(1, 15), created);

  created->selected = true;
  scene().selectedObjects = {created};
  history.undo();
  EXPECT_EQ(created->layer, -1);
  EXPECT_FALSE(created->selected);
  EXPECT_TRUE(scene().selectedObjects.empty());
}

TEST_F(UndoStatesTest, DeletedObjectComesBackAsTheSameObject) {
  const auto object = place(1, 0, 9, {L"テキスト", L"ぼかし"});
  const auto chain = object->effects;
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectDelete(object);
    scene().addLayers(1).needsCompaction = true;
    object->layer = -1;
  });
  history.undo();
  EXPECT_EQ(scene().objectAt(1, 5), object);
  EXPECT_EQ(object->effects, chain);
}

TEST_F(UndoStatesTest, SectionPointComesBackWithTheKeyValues) {
  const auto object = place(0, 0, 59, {L"図形"});
  auto& size = object->effects.front()->item<EffectItemNumber>(L"サイズ");
  size.setMovement(effects->findMovement(L"直線移動").movement(), 2);
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectSection(object);
    object->sections = {30};
    for (const auto& effect : object->effects) {
      for (const auto& item : effect->items()) {
        if (auto* number = dynamic_cast<EffectItemNumber*>(item.get())) number->resizeValues(3);
      }
    }
    size.setValue(1, 250);
  });
  EXPECT_EQ(size.valueCount(), 3);
  history.undo();
  EXPECT_EQ(size.valueCount(), 2);
  EXPECT_TRUE(object->sections.empty());
}

TEST_F(UndoStatesTest, GroupChainAndFlagsComeBack) {
  const auto first = place(0, 0, 9, {L"図形"});
  const auto second = place(1, 0, 9, {L"図形"});
  auto group = std::make_shared<Edit::Group>();
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectGroup(first);
    undo.addObjectGroup(second);
    Edit::Group::join(group, *first);
    Edit::Group::join(group, *second);
  });
  EXPECT_EQ(first->group, group);
  EXPECT_EQ(group->size(), 2u);

  std::shared_ptr<Effect::EffectBase> blur;
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectEffect(first);
    blur = Edit::EffectManager(*first, *effects).addEffect(L"ぼかし");
  });
  EXPECT_EQ(first->effects.back(), blur);

  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectFlag(second);
    second->clipping = true;
    second->camera = false;
  });
}

TEST_F(UndoStatesTest, LayerRangeComesBackWithTheRowsControlList) {
  const auto control = place(0, 0, 99, {L"グループ制御"});
  ASSERT_TRUE(control->control);
  auto& range = control->effects.front()->item<Effect::EffectItemLayerRange>(L"対象レイヤー数");
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectLayerRange(control);
    range.setValue(2);
    scene().addLayers(0).needsControlRebuild = true;
  });
  EXPECT_EQ(scene().getLayer(0).controls.at(0).range, 2);
  history.undo();
  EXPECT_EQ(range.value(), 0);
  EXPECT_EQ(scene().getLayer(0).controls.at(0).range, Edit::ControlRecord::kAllLayers);
}

TEST_F(UndoStatesTest, RowSettingsAndPlaceComeBack) {
  place(0, 0, 9, {L"図形"});
  place(1, 0, 9, {L"図形"});
  const auto third = place(2, 0, 9, {L"図形"});
  const auto info = scene().getLayer(0).info;
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addLayerUpdate(info);
    info->name = L"背景";
    info->lock = true;
    info->hide = true;
  });
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addLayerMove(info);
    scene().moveLayer(0, 2);
  });
  EXPECT_EQ(info->index, 2);
  EXPECT_EQ(third->layer, 1);
}

TEST_F(UndoStatesTest, CreatedRowGoesAgain) {
  place(0, 0, 9, {L"図形"});
  const auto below = place(1, 0, 9, {L"図形"});
  expectUndoRedo([&](UndoRecorder& undo) {
    scene().createLayer(1);
    undo.addLayerCreate(scene().getLayer(1).info);
  });
  EXPECT_EQ(below->layer, 2);
  history.undo();
  EXPECT_EQ(below->layer, 1);
}

TEST_F(UndoStatesTest, DeletedRowComesBackWithItsNameAndObjects) {
  const auto doomed = place(1, 0, 9, {L"図形"});
  const auto below = place(2, 0, 9, {L"図形"});
  const auto info = scene().getLayer(1).info;
  info->name = L"消す行";
  // The objects first, so that undo (last to first) has the row back before them.
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectDelete(doomed);
    undo.addLayerDelete(info);
    scene().deleteLayer(1);
  });
  EXPECT_EQ(below->layer, 1);
  history.undo();
  EXPECT_EQ(scene().getLayer(1).info, info);
  EXPECT_EQ(scene().objectAt(1, 5), doomed);
  EXPECT_EQ(below->layer, 2);
}

TEST_F(UndoStatesTest, EffectValuesAndSwitchesComeBack) {
  const auto object = place(0, 0, 9, {L"テキスト"});
  const auto effect = object->effects.front();
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addEffectUpdate(effect);
    effect->item<Effect::EffectItemText>(L"テキスト").setValue(L"こんにちは");
    effect->disable = true;
  });
  EXPECT_TRUE(effect->disable);

  // Only the item that changed keeps its copies once the action is over.
  Undo::UndoItemTemplate<Effect::EffectBase, Effect::EffectUndoUpdate> item(effect);
  auto& size = effect->item<EffectItemNumber>(L"サイズ");
  size.setValue(0, 80);
  EXPECT_TRUE(item.commit());
  const auto& items = effect->items();
  const auto index = static_cast<std::size_t>(
      std::find_if(items.begin(), items.end(), [&](const auto& held) { return held.get() == &size; }) - items.begin());
  EXPECT_TRUE(item.before().holdsOnly(index));
  EXPECT_TRUE(item.after().holdsOnly(index));
}

TEST_F(UndoStatesTest, AnotherNumberOfItemsIsRefused) {
  const auto effect = std::make_shared<GrowingEffect>();
  Undo::UndoItemTemplate<Effect::EffectBase, Effect::EffectUndoUpdate> item(effect);
  effect->grow();
  EXPECT_TRUE(throwsNote([&] { item.commit(); }, "Effect::EffectUndoUpdate::commit"));

  // Through the service: the undo fails after its position has moved.
  const auto grown = std::make_shared<GrowingEffect>();
  {
    Edit::EditSection section(edit);
    section.recordUndo()->addEffectUpdate(grown);
    grown->item<EffectItemNumber>(L"強さ").setValue(0, 70);
  }
  grown->grow();
  EXPECT_TRUE(throwsNote([&] { history.undo(); }, "Effect::EffectUndoUpdate::restore"));
  EXPECT_FALSE(history.canUndo());
  EXPECT_TRUE(history.canRedo());
}

}  // namespace
