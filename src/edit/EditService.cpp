#include "edit/EditService.h"

#include <mutex>

#include "edit/Scene.h"

namespace Edit {

EditService::EditService() : project_(sceneDefaults_), currentScene_(project_.findScene(0)) {}

void EditService::newProject() {
  std::unique_lock exclusive(lock_);
  project_.clear(sceneDefaults_);
  currentScene_ = project_.findScene(0);
  clipboard_.clear();
}

void EditService::replaceProject(const std::function<void(Project& project)>& fill) {
  if (playerStop_) playerStop_();
  std::unique_lock exclusive(lock_);
  project_.clear(sceneDefaults_);
  currentScene_ = project_.findScene(0);
  clipboard_.clear();
  try {
    fill(project_);
  } catch (...) {
    project_.clear(sceneDefaults_);
    currentScene_ = project_.findScene(0);
    throw;
  }
  for (const auto& entry : project_.scenes()) entry.value->update();
  const std::shared_ptr<Scene> current = project_.findScene(project_.currentScene);
  currentScene_ = current ? current : project_.findScene(0);
}

EditService::~EditService() = default;

std::shared_ptr<Scene> EditService::getScene(std::int32_t id) { return project_.addScene(id, sceneDefaults_); }

void EditService::setScene(std::int32_t id) {
  currentScene_ = getScene(id);
  project_.currentScene = id;
}

}  // namespace Edit
