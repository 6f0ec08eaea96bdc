// A scripted editing session on a loaded project: the commands of a user's afternoon
// end in a stored project text, and undoing and redoing the whole session gives back
// the start and the end byte for byte.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "CommandTestSupport.h"
#include "edit/Clipboard.h"
#include "edit/ObjectDrag.h"
#include "system/IniFile.h"

namespace {

using namespace CommandTest;
using Edit::Object;

std::string readData(const std::string& name) {
  std::ifstream file(std::string(SORVEL_TEST_DATA_DIR) + "/project/" + name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class EditSessionTest : public CommandTestBase {
 protected:
  void load(const std::string& text) {
    System::IniFile ini;
    ini.loadMemory(text);
    Edit::ProjectFile::LoadResult result;
    edit.replaceProject([&](Edit::Project& project) { Edit::ProjectFile::read(project, ini, {}, *effects, result); });
  }

  const std::shared_ptr<Object>& at(std::int32_t layer, std::int32_t frame) { return scene().objectAt(layer, frame); }

  void selectOnly(std::initializer_list<std::shared_ptr<Object>> objects) {
    for (const auto& object : scene().selectedObjects) object->selected = false;
    scene().selectedObjects.clear();
    select(objects);
  }

  void switchScene(std::int32_t id) {
    Edit::EditSection section(edit);
    edit.setScene(id);
  }

  // A drag of one object by the timeline, as one undo record.
  void drag(const std::shared_ptr<Object>& object, std::int32_t layer, std::int32_t frame) {
    Edit::EditSection section(edit);
    section.request(Request::Update);
    Edit::DragStart start;
    start.kind = Edit::DragKind::Move;
    start.grabbedObject = object;
    start.layer = object->layer;
    start.frame = object->start;
    const std::vector<std::shared_ptr<Object>> selection{object};
    Edit::DragState state = Edit::ObjectDrag::begin(start, selection, section.recordUndo());
    Edit::DragInput input;
    input.layer = layer;
    input.frame = frame;
    input.maxLayer = 99;
    input.snap = false;
    Edit::ObjectDrag::step(scene(), state, selection, input);
    Edit::ObjectDrag::finish(state, selection);
  }

  // Undoes (or redoes) everything in both scenes, ending on scene 0.
  void undoAll(bool redo) {
    for (const std::int32_t id : {1, 0}) {
      switchScene(id);
      while (redo ? history.canRedo() : history.canUndo()) redo ? history.redo() : history.undo();
    }
  }
};

TEST_F(EditSessionTest, ScriptedSessionEndsInTheStoredProject) {
  load(readData("session.svj2"));
  const std::string start = text();

  // Split the shape at 30, then move its right part down two rows.
  selectOnly({at(0, 0)});
  command.splitObject(30);
  drag(at(0, 40), 3, 45);
  // Group the text with the square, copy both, paste them into the other scene.
  selectOnly({at(1, 10), at(2, 30)});
  command.setGroup();
  command.copyObject();
  switchScene(1);
  command.pasteObject(Edit::ObjectPaste::Position{1, 5});
  switchScene(0);
  // Cut frames 20 to 39 out of the text, the square and the left part of the shape,
  // closing the gaps.
  selectOnly({at(0, 0), at(1, 10), at(2, 30)});
  scene().selectionRangeStart = 20;
  scene().selectionRangeEnd = 39;
  scene().cursorFrame = 50;
  command.cutObject(true);
  EXPECT_EQ(scene().cursorFrame, 30);

  const std::string end = text();
  EXPECT_EQ(end, readData("session.expected.svj2"));

  // The cursor is the user's place, not an edit: no undo moves it.
  undoAll(false);
  scene().cursorFrame = 0;
  EXPECT_EQ(text(), start);
  undoAll(true);
  scene().cursorFrame = 30;
  EXPECT_EQ(text(), end);
}

}  // namespace
