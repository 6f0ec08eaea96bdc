// Random sequences of edits, each one undo record: undoing them one by one must give
// back every earlier project text byte for byte, and redoing them every later one.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Object.h"
#include "edit/ObjectDrag.h"
#include "edit/ObjectPaste.h"
#include "edit/ObjectSections.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"
#include "undo/UndoService.h"

namespace {

using Edit::Object;
using Request = Edit::EditSection::Request;

class RandomEditUndoTest : public ::testing::TestWithParam<unsigned> {
 protected:
  static void SetUpTestSuite() { effects = new Effect::EffectService(); }
  static void TearDownTestSuite() {
    delete effects;
    effects = nullptr;
  }

  void SetUp() override {
    scene().visibleFrames = 400;
    const wchar_t* keys[] = {L"図形", L"テキスト", L"画像ファイル"};
    for (std::int32_t i = 0; i < 6; ++i) {
      Edit::EditSection section(edit);
      section.request(Request::Update);
      auto object = scene().createEmptyObject(i % 3, i * 40, i * 40 + 29);
      Edit::EffectManager(*object, *effects).addEffect(keys[i % 3]);
    }
  }

  Edit::Scene& scene() { return *edit.currentScene(); }
  std::string text() { return Edit::ProjectFile::write(edit.project()); }

  std::vector<std::shared_ptr<Object>> objects() {
    std::vector<std::shared_ptr<Object>> found;
    for (std::int32_t row = 0; row < scene().layerCount(); ++row) {
      for (const auto& object : scene().getLayer(row).objects) {
        if (object->layer == row) found.push_back(object);
      }
    }
    return found;
  }

  // One user action on a random object, in its own section with its own undo record.
  void randomEdit(std::mt19937& random) {
    const auto all = objects();
    ASSERT_FALSE(all.empty());
    const std::shared_ptr<Object> object = all[random() % all.size()];
    const auto pick = [&](std::int32_t low, std::int32_t high) {
      return low + static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(high - low + 1));
    };
    Edit::EditSection section(edit);
    section.request(Request::Update);
    Edit::UndoRecorder& undo = *section.recordUndo();
    switch (random() % 6) {
      case 0:
      case 1: {  // a drag: move, left edge or right edge
        const Edit::DragKind kinds[] = {Edit::DragKind::Move, Edit::DragKind::LeftEdge, Edit::DragKind::RightEdge};
        Edit::DragStart start;
        start.kind = kinds[random() % 3];
        start.grabbedObject = object;
        start.layer = object->layer;
        start.frame = object->start;
        const std::vector<std::shared_ptr<Object>> selection{object};
        Edit::DragState drag = Edit::ObjectDrag::begin(start, selection, &undo);
        Edit::DragInput input;
        input.layer = std::max(0, object->layer + pick(-1, 1));
        input.frame = object->start + pick(-30, 30);
        input.snap = random() % 2 == 0;
        input.maxLayer = 5;
        Edit::ObjectDrag::step(scene(), drag, selection, input);
        Edit::ObjectDrag::finish(drag, selection);
        break;
      }
      case 2: {  // a section point where the object can take one
        const std::int32_t frame = pick(object->start, object->end);
        undo.addObjectSection(object);
        Edit::ObjectSections::addSection(*object, frame, Edit::ObjectSections::keyValuesAt(*object, frame));
        break;
      }
      case 3: {  // a value with a movement
        Effect::EffectItemNumber* number = nullptr;
        for (const auto& item : object->effects.back()->items()) {
          if ((number = dynamic_cast<Effect::EffectItemNumber*>(item.get()))) break;
        }
        if (!number) break;
        undo.addEffectUpdate(object->effects.back());
        number->setMovement(Effect::findMovement(L"直線移動"), static_cast<std::int32_t>(object->sections.size()) + 2);
        number->setValue(number->valueCount() - 1, pick(-50, 50));
        break;
      }
      case 4: {  // a duplicate below
        Edit::ObjectPaste(scene(), *effects, &undo).duplicateObject({object}, false);
        break;
      }
      case 5: {  // a split into two new objects
        if (object->end <= object->start) break;
        const std::int32_t frame = pick(object->start + 1, object->end);
        auto left = scene().createEmptyObject(object->layer, object->start, object->end);
        auto right = scene().createEmptyObject(object->layer, object->start, object->end);
        Edit::ObjectSections::split(*object, frame, *left, *right, scene(), *effects);
        undo.addObjectDelete(object);
        object->layer = -1;
        scene().addLayers(left->layer).needsCompaction = true;
        undo.addObjectCreate(left);
        undo.addObjectCreate(right);
        break;
      }
    }
  }

  static Effect::EffectService* effects;
  Edit::EditService edit;
  Undo::UndoService undoService{edit};
};

Effect::EffectService* RandomEditUndoTest::effects = nullptr;

TEST_P(RandomEditUndoTest, UndoAndRedoRestoreEveryStateByteForByte) {
  std::mt19937 random(GetParam());
  std::vector<std::string> states{text()};
  for (int i = 0; i < 40; ++i) {
    randomEdit(random);
    if (undoService.canUndo() && text() != states.back()) states.push_back(text());
  }
  ASSERT_GT(states.size(), 10u);
  for (std::size_t i = states.size() - 1; i > 0; --i) {
    ASSERT_TRUE(undoService.canUndo());
    undoService.undo();
    ASSERT_EQ(text(), states[i - 1]) << "undo back to state " << i - 1;
  }
  for (std::size_t i = 1; i < states.size(); ++i) {
    undoService.redo();
    ASSERT_EQ(text(), states[i]) << "redo to state " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEditUndoTest, ::testing::Values(1u, 7u, 42u, 2026u));

}  // namespace
