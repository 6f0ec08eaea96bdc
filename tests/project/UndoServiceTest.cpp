// The undo service's rules: when a record is made, how far undo and redo go, the limit
// from the main ini, the text box variants, one history per scene, and the `modified`
// flag against the position of the last save.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Object.h"
#include "edit/Project.h"
#include "edit/Scene.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemText.h"
#include "system/Log.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"
#include "undo/UndoService.h"

namespace {

using Edit::Object;
using Edit::UndoRecorder;
using Effect::EffectItemNumber;
using Request = Edit::EditSection::Request;

class UndoServiceTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { effects = new Effect::EffectService(); }
  static void TearDownTestSuite() {
    delete effects;
    effects = nullptr;
  }

  Edit::Scene& scene() { return *edit.currentScene(); }

  std::shared_ptr<Object> place(std::int32_t layer, const wchar_t* key = L"図形") {
    Edit::EditSection section(edit);
    section.request(Request::Update);
    auto object = scene().createEmptyObject(layer, 0, 9);
    Edit::EffectManager(*object, *effects).addEffect(key);
    return object;
  }

  template <class Change>
  void act(Change&& change) {
    Edit::EditSection section(edit);
    section.request(Request::Update);
    change(*section.recordUndo());
  }

  // One record: the object one frame to the right.
  void nudge(const std::shared_ptr<Object>& object) {
    act([&](UndoRecorder& undo) {
      undo.addObjectUpdate(object);
      ++object->start;
      ++object->end;
    });
  }

  void switchScene(std::int32_t id) {
    Edit::EditSection section(edit);
    edit.setScene(id);
  }

  static Effect::EffectService* effects;
  Edit::EditService edit;
  Undo::UndoService history{edit};
};

Effect::EffectService* UndoServiceTest::effects = nullptr;

TEST_F(UndoServiceTest, NoRecordWhenNothingChanged) {
  const auto object = place(0);
  const auto effect = object->effects.front();
  auto& size = effect->item<EffectItemNumber>(L"サイズ");
  size.setValue(0, 5);

  act([&](UndoRecorder& undo) {
    undo.addObjectUpdate(object);
    undo.addEffectUpdate(effect);
  });
  act([&](UndoRecorder& undo) {
    undo.addEffectUpdate(effect);
    size.setValue(0, 6);
    size.setValue(0, 5);
  });
  {
    Edit::EditSection unrecorded(edit);
    object->start = 3;
  }
  EXPECT_FALSE(history.canUndo());
  EXPECT_FALSE(history.modified());

  Edit::EditService bare;
  Edit::EditSection section(bare);
  EXPECT_EQ(section.recordUndo(), nullptr);
}

TEST_F(UndoServiceTest, UndoAndRedoStopAtTheEnds) {
  history.undo();
  history.redo();
  EXPECT_FALSE(history.canUndo());
  EXPECT_FALSE(history.canRedo());

  const auto object = place(0);
  nudge(object);
  history.redo();
  EXPECT_EQ(object->start, 1);
  history.undo();
  history.undo();
  EXPECT_EQ(object->start, 0);
  EXPECT_FALSE(history.canUndo());
  EXPECT_TRUE(history.canRedo());
}

TEST_F(UndoServiceTest, NewEditAfterUndoLosesTheUndoneRecords) {
  const auto object = place(0);
  for (int i = 0; i < 3; ++i) nudge(object);
  history.undo();
  history.undo();
  EXPECT_EQ(object->start, 1);
  nudge(object);
  EXPECT_FALSE(history.canRedo());
  history.undo();
  history.undo();
  EXPECT_EQ(object->start, 0);
  EXPECT_FALSE(history.canUndo());
}

TEST_F(UndoServiceTest, UndoAndRedoLogTheNumberOfItems) {
  std::vector<std::pair<std::string, std::string>> lines;
  System::Log::setHandler(
      [&](const System::Log::Type&, const char* place, const char* message) { lines.emplace_back(place, message); });
  const auto first = place(0);
  const auto second = place(1);
  act([&](UndoRecorder& undo) {
    undo.addObjectUpdate(first);
    undo.addObjectFlag(second);
    first->start = 4;
    second->clipping = true;
  });
  history.undo();
  history.redo();
  System::Log::resetHandler();
  EXPECT_EQ(lines, (std::vector<std::pair<std::string, std::string>>{{"Undo::UndoService::undo", "Undo: 2"},
                                                                     {"Undo::UndoService::redo", "Redo: 2"}}));
}

TEST_F(UndoServiceTest, UndoMaxComesFromTheMainIni) {
  const auto object = place(0);
  System::SingletonRef<System::MainIniFile> ini;
  ini->setWriteOnDestruction(false);
  {
    Undo::UndoService fresh(edit);
    EXPECT_EQ(fresh.undoMax(), 100);
  }
  EXPECT_EQ(ini->value("Undo", "UndoMax").toInt(), 100);  // written back for the user

  ini->value("Undo", "UndoMax").setInt(3);
  {
    Undo::UndoService limited(edit);
    nudge(object);
    limited.markSaved();
    for (int i = 0; i < 3; ++i) nudge(object);  // the saved record is pushed out
    for (int i = 0; i < 4; ++i) limited.undo();
    EXPECT_EQ(object->start, 1);
    // The change of the record that went is still applied: this is the saved state.
    EXPECT_FALSE(limited.modified());
  }

  ini->value("Undo", "UndoMax").setInt(-5);
  Undo::UndoService none(edit);
  nudge(object);
  EXPECT_FALSE(none.canUndo());
  EXPECT_TRUE(none.modified());
}

TEST_F(UndoServiceTest, DeletedObjectIsFreedWithTheLastRecordThatHoldsIt) {
  const auto other = place(0);
  std::weak_ptr<Object> watched;
  {
    const auto doomed = place(1);
    watched = doomed;
    act([&](UndoRecorder& undo) {
      undo.addObjectDelete(doomed);
      scene().addLayers(1).needsCompaction = true;
      doomed->layer = -1;
    });
  }
  EXPECT_FALSE(watched.expired());
  for (int i = 0; i < 100; ++i) nudge(other);
  EXPECT_TRUE(watched.expired());
  for (int i = 0; i < 101; ++i) history.undo();
  EXPECT_EQ(other->start, 0);
  EXPECT_FALSE(scene().objectAt(1, 5));
}

TEST_F(UndoServiceTest, TextBoxUndoActsOnlyOnARecordOfItsItemAlone) {
  const auto effect = place(0, L"テキスト")->effects.front();
  auto& words = effect->item<Effect::EffectItemText>(L"テキスト");
  auto& size = effect->item<EffectItemNumber>(L"サイズ");
  const std::wstring original = words.value();
  act([&](UndoRecorder& undo) {
    undo.addEffectUpdate(effect);
    words.setValue(L"一");
  });
  act([&](UndoRecorder& undo) {
    undo.addEffectUpdate(effect);
    words.setValue(L"二");
    size.setValue(0, 60);
  });
  history.undoText(words);  // the record changed the size too
  EXPECT_EQ(words.value(), L"二");
  history.undo();
  history.undoText(size);  // the record is the text's
  EXPECT_EQ(words.value(), L"一");
  history.undoText(words);
  EXPECT_EQ(words.value(), original);
  history.redoText(size);
  EXPECT_EQ(words.value(), original);
  history.redoText(words);
  EXPECT_EQ(words.value(), L"一");
  EXPECT_TRUE(history.canRedo());
}

TEST_F(UndoServiceTest, ReturningToTheSavedPositionClearsModified) {
  const auto object = place(0);
  nudge(object);
  history.markSaved();
  EXPECT_FALSE(history.modified());
  nudge(object);
  EXPECT_TRUE(history.modified());
  history.undo();
  EXPECT_FALSE(history.modified());
  history.redo();
  EXPECT_TRUE(history.modified());
  history.undo();
  history.undo();
  EXPECT_TRUE(history.modified());

  // The new edit drops the saved record: no undo or redo reaches it again.
  nudge(object);
  history.undo();
  EXPECT_TRUE(history.modified());
  history.redo();
  EXPECT_TRUE(history.modified());
  history.markSaved();
  EXPECT_FALSE(history.modified());
  history.undo();
  EXPECT_TRUE(history.modified());
}

TEST_F(UndoServiceTest, EachSceneKeepsItsOwnHistory) {
  const auto root = place(0);
  nudge(root);
  history.markSaved();
  nudge(root);

  switchScene(1);
  EXPECT_FALSE(history.canUndo());
  const auto other = place(0);
  nudge(other);
  nudge(other);
  history.undo();
  EXPECT_EQ(other->start, 1);
  EXPECT_EQ(root->start, 2);
  history.undo();
  EXPECT_EQ(other->start, 0);
  EXPECT_TRUE(history.modified());  // scene 0 is still past its saved position

  switchScene(0);
  EXPECT_TRUE(history.canUndo());
  EXPECT_FALSE(history.canRedo());
  history.undo();
  EXPECT_EQ(root->start, 1);
  EXPECT_EQ(other->start, 0);
  EXPECT_FALSE(history.modified());
}

TEST_F(UndoServiceTest, HistoriesGoWithTheirScenes) {
  const auto root = place(0);
  history.markSaved();
  switchScene(2);
  nudge(place(0));
  switchScene(0);
  {
    Edit::EditSection section(edit);
    edit.project().eraseScene(2);
  }
  // The change made in the deleted scene cannot be taken back any more.
  nudge(root);
  history.undo();
  EXPECT_TRUE(history.modified());

  edit.replaceProject([](Edit::Project&) {});
  EXPECT_FALSE(history.canUndo());
  EXPECT_FALSE(history.canRedo());
}

}  // namespace
