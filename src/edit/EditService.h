// Owner of the one project, the current scene and the model's reader/writer lock; a
// global service (System::Singleton). Its operations run on the main thread; render
// workers only reach the lock and the current scene through an Edit::SceneReader. What
// changed reaches the window contents through the lists of the event service, which
// every edit service holds from its construction.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "edit/Clipboard.h"
#include "edit/Project.h"
#include "edit/SceneDefaults.h"
#include "edit/ViewOptions.h"
#include "event/EventService.h"
#include "system/ReaderWriterLock.h"
#include "system/Singleton.h"

namespace Edit {

class EditSection;
class Scene;
class UndoRecorder;

class EditService {
 public:
  // Told about every edit section after its close has released the lock, before the
  // event lists are fired: the requests that go to the settings windows rather than to
  // a list.
  using SectionListener = std::function<void(const EditSection& section)>;

  EditService();
  ~EditService();
  EditService(const EditService&) = delete;
  EditService& operator=(const EditService&) = delete;

  // Where edit sections and project replacement tell what changed.
  Event::EventService& events() noexcept { return *events_; }

  Project& project() noexcept { return project_; }
  const Project& project() const noexcept { return project_; }

  // Changed only inside an edit section, so a reader that holds the lock sees a
  // stable pointer.
  const std::shared_ptr<Scene>& currentScene() const noexcept { return currentScene_; }
  // The scene with this id, created when it is missing.
  std::shared_ptr<Scene> getScene(std::int32_t id);

  // The values a new scene starts from, until the settings service hands them over.
  const SceneDefaults& sceneDefaults() const noexcept { return sceneDefaults_; }
  void setSceneDefaults(const SceneDefaults& defaults) { sceneDefaults_ = defaults; }

  // Makes the scene with this id (created when missing) the current one and stores the
  // id in the project. Call it inside an edit section, so that readers never see the
  // pointer change. The undo history follows by itself: it is looked up by the scene.
  void setScene(std::int32_t id);

  // Replaces the project with an empty one whose scene 0 has the current defaults.
  // Takes the model's lock, so render readers never see it half made; `project
  // replaced` fires after the lock is released.
  void newProject();

  // Replaces the project with what `fill` makes of a fresh empty one, under the model's
  // lock with the player stopped; then every scene is brought into order and the scene
  // that the project names becomes the current one. A scene that the project names but
  // does not have gives way to scene 0, which the project then names. If `fill` throws,
  // the project is left empty and the exception passes on. Either way, once the lock is
  // released, `project replaced` fires and then `scene changed` with the current scene.
  void replaceProject(const std::function<void(Project& project)>& fill);

  // The player installs how to stop it; an edit section calls it before taking the lock.
  void setPlayerStop(std::function<void()> stop) { playerStop_ = std::move(stop); }
  // The event service connects its lists here. An empty function disconnects.
  void setSectionListener(SectionListener listener) { sectionListener_ = std::move(listener); }

  // The undo history, which lives in a library above this one, connects here: an edit
  // section that records calls `begin` once and registers its targets with `recorder`,
  // and its close calls `commit` inside the lock. Empty hooks (the default) mean that
  // no history is kept and sections record nothing.
  struct UndoHooks {
    UndoRecorder* recorder = nullptr;
    std::function<void()> begin;
    std::function<void()> commit;
  };
  void setUndoHooks(UndoHooks hooks) { undoHooks_ = std::move(hooks); }

  System::ReaderWriterLock& lock() noexcept { return lock_; }

  // What copy and cut took; a new or loaded project empties it, a change of scene keeps
  // it, so objects can be pasted from one scene into another.
  Clipboard& clipboard() noexcept { return clipboard_; }

  // The switches of the preview and the timeline that the view commands set.
  ViewOptions& viewOptions() noexcept { return viewOptions_; }

 private:
  friend class EditSection;

  // Empties the project, the clipboard with it. Inside the lock.
  void resetProject();

  System::SingletonRef<Event::EventService> events_;
  // Declared before the project, which makes its scene 0 from it.
  SceneDefaults sceneDefaults_;
  Project project_;
  std::shared_ptr<Scene> currentScene_;
  std::function<void()> playerStop_;
  SectionListener sectionListener_;
  UndoHooks undoHooks_;
  System::ReaderWriterLock lock_;
  Clipboard clipboard_;
  ViewOptions viewOptions_;
};

}  // namespace Edit
