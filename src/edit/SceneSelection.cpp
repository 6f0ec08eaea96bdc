#include "edit/SceneSelection.h"

#include <algorithm>

#include "edit/Layer.h"
#include "edit/Object.h"
#include "edit/Scene.h"

namespace Edit::SceneSelection {

std::vector<std::shared_ptr<Object>> targets(const Scene& scene) {
  if (!scene.selectedObjects.empty()) return scene.selectedObjects;
  if (scene.focusObject && scene.focusObject->layer != -1) return {scene.focusObject};
  return {};
}

std::vector<std::shared_ptr<Object>> editableTargets(const Scene& scene) {
  std::vector<std::shared_ptr<Object>> editable = targets(scene);
  std::erase_if(editable, [&scene](const std::shared_ptr<Object>& object) {
    return object->layer >= 0 && scene.getLayer(object->layer).info->lock;
  });
  return editable;
}

void clear(Scene& scene) {
  for (const std::shared_ptr<Object>& object : scene.selectedObjects) object->selected = false;
  scene.selectedObjects.clear();
  scene.selectionHasControl = false;
  scene.lowestSelectedLayer = 0;
}

void drop(Scene& scene, Object& object) {
  if (!object.selected) return;
  object.selected = false;
  std::erase_if(scene.selectedObjects,
                [&object](const std::shared_ptr<Object>& selected) { return selected.get() == &object; });
  scene.selectionHasControl = false;
  scene.lowestSelectedLayer = 0;
  for (const std::shared_ptr<Object>& selected : scene.selectedObjects) {
    scene.selectionHasControl = scene.selectionHasControl || selected->control;
    scene.lowestSelectedLayer = std::max(scene.lowestSelectedLayer, selected->layer);
  }
}

void takeOut(Scene& scene, Object& object) {
  if (object.layer >= 0 && object.layer < scene.layerCount()) {
    Layer& row = scene.addLayers(object.layer);
    row.needsCompaction = true;
    if (object.control) row.needsControlRebuild = true;
  }
  object.layer = -1;
  drop(scene, object);
}

}  // namespace Edit::SceneSelection
