// Every kind of undo state: an edit recorded as one action, taken back by undo and
// applied again by redo, compared through the project's canonical text; and what the
// comparison at the end of an action keeps of a state.
#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
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

#include "ProjectBench.h"

namespace {

using Edit::Object;
using Edit::UndoRecorder;
using Effect::EffectItemNumber;
using Request = Edit::EditSection::Request;
using ObjectUpdate = Undo::UndoItemTemplate<Object, Edit::ObjectUndoUpdate>;
using EffectUpdate = Undo::UndoItemTemplate<Effect::EffectBase, Effect::EffectUndoUpdate>;

// An effect whose list of items can grow, as a script's can when its file changes.
constexpr Effect::ItemRow kGrowingItems[] = {Effect::number(L"強さ", 50, 0, 100, 1)};

class GrowingEffect final : public Effect::EffectInstance<GrowingEffect> {
 public:
  static inline const Effect::EffectInfo kInfo{
      L"伸びる効果", Effect::EffectType::Filter, Effect::EffectMedia::Video, Effect::EffectMedia::Video, L"",
      kGrowingItems};
  GrowingEffect() : EffectInstance(kInfo) {}
  void grow() { mutableItems().push_back(std::make_unique<EffectItemNumber>(L"追加", 0, 0, 10, 1)); }
};

// `call` must refuse a state of another number of items, naming `place`.
void expectItemCountNote(const std::function<void()>& call, const std::string& place) {
  try {
    call();
    ADD_FAILURE() << "nothing thrown";
  } catch (const System::NoteException& exception) {
    EXPECT_EQ(exception.message(), "different number of items.");
    EXPECT_NE(exception.text().find("[Place]\n" + place + "()"), std::string::npos) << exception.text();
  }
}

class UndoStatesTest : public ProjectTest::ProjectBench {
 protected:
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
};

TEST_F(UndoStatesTest, ObjectUpdateMovesTheObjectBetweenRows) {
  const auto moved = place(0, 0, 29);
  const auto other = place(2, 40, 59);
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
  const auto object = place(0, 0, 59);
  object->sections = {10, 20};

  // Cutting 5 frames off the left shifts every point by 5.
  ObjectUpdate cut(object);
  object->start = 5;
  object->sections = {5, 15};
  EXPECT_TRUE(cut.commit());
  EXPECT_EQ(cut.before().sections, (std::vector<std::int32_t>{10, 20}));

  // A plain move leaves the points where they are relative to the start.
  ObjectUpdate move(object);
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

TEST_F(UndoStatesTest, DeletedAndCreatedObjectsComeBackAsThemselves) {
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

  // Undoing a creation takes the object out of the scene and out of the selection.
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

TEST_F(UndoStatesTest, SectionPointComesBackWithTheKeyValues) {
  const auto object = place(0, 0, 59);
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
}

TEST_F(UndoStatesTest, GroupChainAndFlagsComeBack) {
  const auto first = place(0, 0, 9);
  const auto second = place(1, 0, 9);
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
  auto& range = control->effects.front()->item<Effect::EffectItemLayerRange>(L"対象レイヤー数");
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectLayerRange(control);
    range.setValue(2);
    scene().addLayers(0).needsControlRebuild = true;
  });
  EXPECT_EQ(scene().getLayer(0).controls.at(0).range, 2);
  history.undo();
  EXPECT_EQ(scene().getLayer(0).controls.at(0).range, Edit::ControlRecord::kAllLayers);
}

TEST_F(UndoStatesTest, RowSettingsPlaceCreationAndDeletionComeBack) {
  place(0, 0, 9);
  const auto second = place(1, 0, 9);
  const auto third = place(2, 0, 9);
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
  history.undo();

  // A created row goes again, and the rows below move back up.
  expectUndoRedo([&](UndoRecorder& undo) {
    scene().createLayer(1);
    undo.addLayerCreate(scene().getLayer(1).info);
  });
  EXPECT_EQ(second->layer, 2);
  history.undo();
  EXPECT_EQ(second->layer, 1);

  // A deleted row comes back with its name and objects: the objects are registered
  // first, so that undo (last to first) has the row back before them.
  const auto doomed = scene().getLayer(1).info;
  doomed->name = L"消す行";
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addObjectDelete(second);
    undo.addLayerDelete(doomed);
    scene().deleteLayer(1);
  });
  EXPECT_EQ(third->layer, 1);
  history.undo();
  EXPECT_EQ(scene().getLayer(1).info, doomed);
  EXPECT_EQ(scene().objectAt(1, 5), second);
  EXPECT_EQ(third->layer, 2);
}

TEST_F(UndoStatesTest, EffectValuesAndSwitchesComeBack) {
  const auto effect = place(0, 0, 9, {L"テキスト"})->effects.front();
  expectUndoRedo([&](UndoRecorder& undo) {
    undo.addEffectUpdate(effect);
    effect->item<Effect::EffectItemText>(L"テキスト").setValue(L"こんにちは");
    effect->disable = true;
  });

  // Only the item that changed keeps its copies once the action is over.
  EffectUpdate item(effect);
  auto& size = effect->item<EffectItemNumber>(L"サイズ");
  size.setValue(0, 80);
  EXPECT_TRUE(item.commit());
  for (std::size_t index = 0; index < effect->items().size(); ++index) {
    const bool changed = effect->items()[index].get() == &size;
    EXPECT_EQ(item.before().holdsOnly(index), changed) << index;
    EXPECT_EQ(item.after().holdsOnly(index), changed) << index;
  }
}

TEST_F(UndoStatesTest, AnotherNumberOfItemsIsRefused) {
  const auto effect = std::make_shared<GrowingEffect>();
  EffectUpdate item(effect);
  effect->grow();
  expectItemCountNote([&] { item.commit(); }, "Effect::EffectUndoUpdate::commit");

  // Through the service: the undo fails after its position has moved.
  const auto grown = std::make_shared<GrowingEffect>();
  {
    Edit::EditSection section(edit);
    section.recordUndo()->addEffectUpdate(grown);
    grown->item<EffectItemNumber>(L"強さ").setValue(0, 70);
  }
  grown->grow();
  expectItemCountNote([&] { history.undo(); }, "Effect::EffectUndoUpdate::restore");
  EXPECT_FALSE(history.canUndo());
  EXPECT_TRUE(history.canRedo());
}

}  // namespace
