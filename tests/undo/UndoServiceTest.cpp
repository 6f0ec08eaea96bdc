// The undo service's rules: when a record is made, how far undo and redo go, the limit
// from the main ini, the text box variants, one history per scene, and the `modified`
// flag against the position of the last save.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
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
  static void TearDownTestSuite() { delete std::exchange(effects, nullptr); }

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

  // Plays steps on an object, separated by spaces: n nudges it, u undoes, r redoes, s
  // marks the project saved; the number after the letter is where the object then
  // starts, and a trailing + or - says that `modified` is then set or clear.
  void play(const std::shared_ptr<Object>& object, const std::string& steps) {
    std::istringstream in(steps);
    for (std::string step; in >> step;) {
      SCOPED_TRACE(step);
      if (step[0] == 'n') nudge(object);
      if (step[0] == 'u') history.undo();
      if (step[0] == 'r') history.redo();
      if (step[0] == 's') history.markSaved();
      EXPECT_EQ(object->start, std::stoi(step.substr(1)));
      if (step.back() == '+' || step.back() == '-') {
        EXPECT_EQ(history.modified(), step.back() == '+');
      }
    }
  }

  void switchScene(std::int32_t id) {
    Edit::EditSection section(edit);
    edit.setScene(id);
  }

  static inline Effect::EffectService* effects = nullptr;
  Edit::EditService edit;
  Undo::UndoService history{edit};
};

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

TEST_F(UndoServiceTest, UndoAndRedoStopAtTheEndsAndANewEditLosesTheUndoneRecords) {
  history.undo();
  history.redo();
  EXPECT_FALSE(history.canUndo());
  EXPECT_FALSE(history.canRedo());
  const auto object = place(0);
  play(object, "n1 n2 n3 r3 u2 u1 n2");
  EXPECT_FALSE(history.canRedo());
  play(object, "u1 u0 u0");
  EXPECT_FALSE(history.canUndo());
  EXPECT_TRUE(history.canRedo());
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
  EXPECT_EQ(Undo::UndoService(edit).undoMax(), 100);
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
  // After undoing past the save, the new edit drops the saved record: no undo or redo
  // reaches it again.
  play(place(0), "n1 s1- n2+ u1- r2+ u1 u0+ n1 u0+ r1+ s1- u0+");
}

TEST_F(UndoServiceTest, EachSceneKeepsItsOwnHistory) {
  const auto root = place(0);
  play(root, "n1 s1 n2");

  switchScene(1);
  EXPECT_FALSE(history.canUndo());
  const auto other = place(0);
  // Scene 0 is still past its saved position.
  play(other, "n1 n2 u1 u0+");
  EXPECT_EQ(root->start, 2);

  switchScene(0);
  EXPECT_TRUE(history.canUndo());
  EXPECT_FALSE(history.canRedo());
  play(root, "u1-");
  EXPECT_EQ(other->start, 0);
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
  play(root, "n1 u0+");

  edit.replaceProject([](Edit::Project&) {});
  EXPECT_FALSE(history.canUndo());
  EXPECT_FALSE(history.canRedo());
}

}  // namespace
