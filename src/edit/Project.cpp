#include "edit/Project.h"

#include <algorithm>

#include "edit/Scene.h"

namespace Edit {

Project::Project(const SceneDefaults& defaults) { addScene(0, defaults); }

Project::~Project() = default;

void Project::clear(const SceneDefaults& defaults) {
  file.clear();
  currentScene = 0;
  pluginData.clear();
  scenes_.clear();
  addScene(0, defaults);
}

std::shared_ptr<Scene> Project::findScene(std::int32_t id) const {
  const auto* entry = scenes_.find(id);
  return entry ? entry->value : nullptr;
}

std::shared_ptr<Scene> Project::addScene(std::int32_t id, const SceneDefaults& defaults) {
  if (std::shared_ptr<Scene> existing = findScene(id)) return existing;
  std::int32_t order = 0;
  for (const auto& [sceneId, scene] : scenes_) order = std::max(order, scene->displayOrder + 1);
  auto scene = std::make_shared<Scene>(id, order, defaults);
  scenes_.tryEmplace(id, scene);
  return scene;
}

std::int32_t Project::newSceneId() const {
  std::int32_t id = 1;
  while (scenes_.contains(id)) ++id;
  return id;
}

bool Project::eraseScene(std::int32_t id) { return id != 0 && scenes_.erase(id); }

std::vector<std::shared_ptr<Scene>> Project::scenesInDisplayOrder() const {
  std::vector<std::shared_ptr<Scene>> ordered;
  ordered.reserve(scenes_.size());
  for (const auto& [id, scene] : scenes_) ordered.push_back(scene);
  std::stable_sort(ordered.begin(), ordered.end(),
                   [](const std::shared_ptr<Scene>& a, const std::shared_ptr<Scene>& b) {
                     return a->displayOrder < b->displayOrder;
                   });
  return ordered;
}

}  // namespace Edit
