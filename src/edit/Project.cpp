#include "edit/Project.h"

#include <algorithm>
#include <limits>

#include "edit/Scene.h"

namespace Edit {

namespace {

// The order after `order`; a file may hold the largest number, and the next scene then
// shares it rather than wrapping round to the front of the list.
std::int32_t nextAfter(std::int32_t order) {
  return order == std::numeric_limits<std::int32_t>::max() ? order : order + 1;
}

}  // namespace

Project::Project(const SceneDefaults& defaults) { addScene(0, defaults); }

Project::~Project() = default;

void Project::clear(const SceneDefaults& defaults) {
  file.clear();
  currentScene = 0;
  pluginData.clear();
  scenes_.clear();
  displayOrders_.clear();
  addScene(0, defaults);
}

std::shared_ptr<Scene> Project::findScene(std::int32_t id) const {
  const auto* entry = scenes_.find(id);
  return entry ? entry->value : nullptr;
}

std::shared_ptr<Scene> Project::addScene(std::int32_t id, const SceneDefaults& defaults) {
  if (std::shared_ptr<Scene> existing = findScene(id)) return existing;
  const std::int32_t order = displayOrders_.empty() ? 0 : std::max(0, nextAfter(*displayOrders_.rbegin()));
  auto scene = std::make_shared<Scene>(id, order, defaults);
  scenes_.tryEmplace(id, scene);
  displayOrders_.insert(order);
  return scene;
}

void Project::setDisplayOrder(Scene& scene, std::int32_t order) {
  displayOrders_.erase(displayOrders_.find(scene.displayOrder_));
  displayOrders_.insert(order);
  scene.displayOrder_ = order;
}

std::int32_t Project::newSceneId() const {
  std::int32_t id = 1;
  while (scenes_.contains(id)) ++id;
  return id;
}

bool Project::eraseScene(std::int32_t id) {
  const std::shared_ptr<Scene> scene = id == 0 ? nullptr : findScene(id);
  if (!scene) return false;
  displayOrders_.erase(displayOrders_.find(scene->displayOrder_));
  scenes_.erase(id);
  return true;
}

std::vector<std::shared_ptr<Scene>> Project::scenesInDisplayOrder() const {
  std::vector<std::shared_ptr<Scene>> ordered;
  ordered.reserve(scenes_.size());
  for (const auto& [id, scene] : scenes_) ordered.push_back(scene);
  std::stable_sort(ordered.begin(), ordered.end(),
                   [](const std::shared_ptr<Scene>& a, const std::shared_ptr<Scene>& b) {
                     return a->displayOrder() < b->displayOrder();
                   });
  return ordered;
}

}  // namespace Edit
