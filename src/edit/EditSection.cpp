#include "edit/EditSection.h"

#include <exception>

#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "system/Log.h"

namespace Edit {

EditSection::EditSection(EditService& service) : service_(service), exceptionsAtOpen_(std::uncaught_exceptions()) {
  // Stopping waits for the player's workers, which may be about to take the lock
  // shared: taking it exclusively first could leave both waiting for ever.
  if (service_.playerStop_) service_.playerStop_();
  scene_ = service_.currentScene();
  lock_ = std::unique_lock<System::ReaderWriterLock>(service_.lock());
}

UndoRecorder* EditSection::recordUndo() {
  if (!service_.undoHooks_.recorder) return nullptr;
  if (!undoOpen_) {
    undoOpen_ = true;
    if (service_.undoHooks_.begin) service_.undoHooks_.begin();
  }
  return service_.undoHooks_.recorder;
}

EditSection::~EditSection() noexcept(false) {
  if (std::uncaught_exceptions() > exceptionsAtOpen_) {
    closeWhileUnwinding();
    return;
  }
  close();
  // Listeners may open a section of their own.
  lock_.unlock();
  tell();
}

void EditSection::close() {
  if (requested(Request::Update)) {
    scene_->update();
    if (scene_->focusObject && scene_->focusObject->layer == -1) {
      scene_->focusObject.reset();
      request(Request::Focus);
    }
  }
  if (undoOpen_ && service_.undoHooks_.commit) service_.undoHooks_.commit();
}

// A command that failed half way leaves its changes standing: they are brought into
// order and committed, so one undo takes back what was done, and the windows are told.
// A second failure here cannot travel while the first is in flight; it is logged.
void EditSection::closeWhileUnwinding() noexcept {
  try {
    close();
  } catch (const std::exception& failure) {
    System::Log::error("Edit::EditSection::~EditSection", "%s", failure.what());
  }
  lock_.unlock();
  try {
    tell();
  } catch (const std::exception& failure) {
    System::Log::error("Edit::EditSection::~EditSection", "%s", failure.what());
  }
}

void EditSection::tell() {
  if (service_.sectionListener_) service_.sectionListener_(*this);
  Event::EventService& events = service_.events();
  if (requested(Request::Object)) events.objectChanged.fire(changedObject_);
  if (requested(Request::Timeline)) events.timelineChanged.fire();
  if (requested(Request::Scene)) events.sceneChanged.fire(sceneId_);
  // Copied: a listener may move the focus or the cursor for the lists after it.
  if (requested(Request::Focus)) events.focusChanged.fire(std::shared_ptr<Object>(scene_->focusObject));
  if (requested(Request::Frame)) events.frameChanged.fire(scene_->cursorFrame);
}

}  // namespace Edit
