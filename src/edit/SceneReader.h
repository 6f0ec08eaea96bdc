// The scoped read access of a render worker: the model's lock held shared and the
// current scene kept alive, for one frame or one block of audio. For render threads:
// the main thread reads without it, and no thread may open a second one while it holds one.
#pragma once

#include <memory>
#include <shared_mutex>

#include "system/ReaderWriterLock.h"

namespace Edit {

class EditService;
class Scene;

class SceneReader {
 public:
  explicit SceneReader(EditService& service);
  SceneReader(const SceneReader&) = delete;
  SceneReader& operator=(const SceneReader&) = delete;

  const std::shared_ptr<Scene>& scene() const noexcept { return scene_; }

 private:
  // Declared first: the scene pointer is copied only once the lock is held, since the
  // main thread changes the current scene inside an edit section.
  std::shared_lock<System::ReaderWriterLock> lock_;
  std::shared_ptr<Scene> scene_;
};

}  // namespace Edit
