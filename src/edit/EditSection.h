// The scoped write access to the model. Opening it stops the player, keeps the current
// scene and takes the model's lock exclusively; its close brings the rows into order,
// commits its undo record if it opened one, releases the lock, then tells the section
// listener what was asked for and fires the event service's lists that were asked
// for. Main thread only.
#pragma once

#include <bitset>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

#include "system/ReaderWriterLock.h"

namespace Edit {

class EditService;
class Object;
class Scene;
class UndoRecorder;

class EditSection {
 public:
  // What the close should do, in the order it acts on them. Update runs inside the
  // lock; all others are for the listener, after the lock is released.
  enum class Request {
    Update,    // update() on the scene; a removed focus object is cleared, Focus asked
    Reset,     // the settings window's gauge goes back to the first section
    Rebuild,   // the settings window rebuilds its panels; Refresh is then not looked at
    Refresh,   // the settings window re-reads its items
    Time,      // the time settings window re-reads its item
    Colour,    // the colour settings window refreshes
    Text,      // the text settings window refreshes
    Object,    // `object changed` with changedObject()
    Timeline,  // `timeline changed`
    Scene,     // `scene changed` with sceneId()
    Focus,     // `focus changed` with the scene's focus object
    Frame,     // `frame changed` with the scene's cursor frame
    Count
  };

  explicit EditSection(EditService& service);
  // The close. A section left by an exception closes all the same, so what the command
  // did before it failed stays in order and undoable, and the windows are told; a
  // failure of the close itself is then only logged. Otherwise a listener's exception
  // goes to the caller.
  ~EditSection() noexcept(false);
  EditSection(const EditSection&) = delete;
  EditSection& operator=(const EditSection&) = delete;

  void request(Request request) noexcept { requests_.set(static_cast<std::size_t>(request)); }
  bool requested(Request request) const noexcept { return requests_.test(static_cast<std::size_t>(request)); }

  // The object given to `object changed`; null means any object.
  void setChangedObject(std::shared_ptr<Object> object) { changedObject_ = std::move(object); }
  const std::shared_ptr<Object>& changedObject() const noexcept { return changedObject_; }
  void setSceneId(std::int32_t id) noexcept { sceneId_ = id; }
  std::int32_t sceneId() const noexcept { return sceneId_; }

  // Opens this section's undo record on the first call and returns where the targets
  // are registered; null when no undo history is connected. The close commits the
  // record after the rows are in order, so the history compares ordered rows.
  UndoRecorder* recordUndo();

  // The current scene at the time of opening.
  const std::shared_ptr<Scene>& scene() const noexcept { return scene_; }

 private:
  // Orders the rows and commits the undo record, inside the lock.
  void close();
  void closeWhileUnwinding() noexcept;
  // After the lock: the section listener, then `object changed`, `timeline changed`,
  // `scene changed`, `focus changed` and `frame changed`, those that were asked for.
  void tell();

  EditService& service_;
  const int exceptionsAtOpen_;
  std::bitset<static_cast<std::size_t>(Request::Count)> requests_;
  std::shared_ptr<Object> changedObject_;
  std::int32_t sceneId_ = 0;
  std::shared_ptr<Scene> scene_;
  bool undoOpen_ = false;
  std::unique_lock<System::ReaderWriterLock> lock_;
};

}  // namespace Edit
