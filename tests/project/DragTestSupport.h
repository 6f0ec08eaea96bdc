// What the drag and snapping tests share: a scene of one pixel a frame, a view of frames
// 0 to 999 and the cursor out of every snap's reach; objects added to it; and one drag of
// a selection, stepped by mouse moves that are closed as the edit section would close them.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <tuple>
#include <vector>

#include "edit/DragState.h"
#include "edit/Object.h"
#include "edit/ObjectDrag.h"
#include "edit/Scene.h"

namespace DragTestSupport {

using Selection = std::vector<std::shared_ptr<Edit::Object>>;

class DragFixture : public ::testing::Test {
 protected:
  DragFixture() : scene(1, 0, Edit::SceneDefaults{}) {
    scene.visibleFrames = 1000;
    scene.cursorFrame = 100000;
    input.snap = false;
    input.layerHeight = 20;  // for the Shift lock of a move
    input.maxLayer = 100;
  }

  std::shared_ptr<Edit::Object> add(std::int32_t layer, std::int32_t start, std::int32_t end) {
    auto object = scene.createEmptyObject(layer, start, end);
    scene.update();
    return object;
  }

  void begin(const Edit::DragStart& start, const Selection& objects, Edit::UndoRecorder* undo = nullptr) {
    selection = objects;
    for (const auto& object : objects) object->selected = true;
    drag = Edit::ObjectDrag::begin(start, selection, undo);
  }

  bool moveTo(std::int32_t frame) {
    input.frame = frame;
    const bool moved = Edit::ObjectDrag::step(scene, drag, selection, input);
    scene.update();
    return moved;
  }
  bool moveTo(std::int32_t layer, std::int32_t frame) {
    input.layer = layer;
    return moveTo(frame);
  }

  static void expectAt(const Edit::Object& object, std::int32_t layer, std::int32_t start, std::int32_t end) {
    EXPECT_EQ(std::tuple(object.layer, object.start, object.end), std::tuple(layer, start, end));
  }

  Edit::Scene scene;
  Selection selection;
  Edit::DragState drag;
  Edit::DragInput input;
};

}  // namespace DragTestSupport
