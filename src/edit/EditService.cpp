#include "edit/EditService.h"

#include <exception>
#include <mutex>

#include "edit/Scene.h"
#include "system/Log.h"

namespace Edit {

namespace {

constexpr const char* kPlace = "Edit::EditService::replaceProject";

// Where the edit service fires a list, a listener's failure ends that list's firing and
// the operation goes on: the project has been replaced whatever a window makes of it.
template <class... Args>
void fireQuietly(Event::NotificationList<Args...>& list, Args... args) {
  try {
    list.fire(args...);
  } catch (const std::exception& failure) {
    System::Log::error(kPlace, "%s", failure.what());
  }
}

}  // namespace

EditService::EditService() : project_(sceneDefaults_), currentScene_(project_.findScene(0)) {}

void EditService::resetProject() {
  project_.clear(sceneDefaults_);
  currentScene_ = project_.findScene(0);
  clipboard_.clear();
}

void EditService::newProject() {
  {
    std::unique_lock exclusive(lock_);
    resetProject();
  }
  fireQuietly(events_->projectReplaced);
}

void EditService::replaceProject(const std::function<void(Project& project)>& fill) {
  if (playerStop_) playerStop_();
  std::exception_ptr failure;
  {
    std::unique_lock exclusive(lock_);
    resetProject();
    try {
      fill(project_);
    } catch (...) {
      failure = std::current_exception();
      resetProject();
    }
    for (const auto& entry : project_.scenes()) entry.value->update();
    // The scene shown must be one of the project's, and the next save must name the
    // scene that was shown.
    const std::shared_ptr<Scene> current = project_.findScene(project_.currentScene);
    if (!current) project_.currentScene = 0;
    currentScene_ = current ? current : project_.findScene(0);
  }
  fireQuietly(events_->projectReplaced);
  fireQuietly(events_->sceneChanged, project_.currentScene);
  if (failure) std::rethrow_exception(failure);
}

EditService::~EditService() = default;

std::shared_ptr<Scene> EditService::getScene(std::int32_t id) { return project_.addScene(id, sceneDefaults_); }

void EditService::setScene(std::int32_t id) {
  currentScene_ = getScene(id);
  project_.currentScene = id;
}

}  // namespace Edit
