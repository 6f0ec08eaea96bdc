// The project in memory: its file name, its scenes and the data that plug-ins keep in
// it. Exactly one lives in the edit service. Changed on the main thread inside an edit
// section; a render worker holding a scene reader may look scenes up.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "system/OrderedMap.h"
#include "edit/SceneDefaults.h"

namespace Edit {

class Scene;

// What one plug-in stores in the project; saved only while `inUse` is set.
struct PluginData {
  bool inUse = false;
  System::OrderedMap<std::string, std::string> values;
};

class Project {
 public:
  using SceneMap = System::OrderedMap<std::int32_t, std::shared_ptr<Scene>>;

  explicit Project(const SceneDefaults& defaults);
  ~Project();
  Project(const Project&) = delete;
  Project& operator=(const Project&) = delete;

  // Back to a new project: no file, no plug-in data, only a fresh scene 0.
  void clear(const SceneDefaults& defaults);

  std::shared_ptr<Scene> findScene(std::int32_t id) const;
  // The scene with this id, created when missing with the highest display order plus 1.
  std::shared_ptr<Scene> addScene(std::int32_t id, const SceneDefaults& defaults);
  // Moves a scene of this project to another place in the scene list.
  void setDisplayOrder(Scene& scene, std::int32_t order);
  // The smallest positive id not in use, so the ids of deleted scenes come back.
  std::int32_t newSceneId() const;
  // Scene 0 always exists: erasing it does nothing. True if a scene went.
  bool eraseScene(std::int32_t id);

  // Insertion order.
  const SceneMap& scenes() const noexcept { return scenes_; }
  // The order of the scene list; scenes of equal display order keep insertion order.
  std::vector<std::shared_ptr<Scene>> scenesInDisplayOrder() const;

  std::wstring file;  // empty for a new project; variables expanded
  std::int32_t currentScene = 0;
  System::OrderedMap<std::wstring, PluginData> pluginData;

 private:
  SceneMap scenes_;
  // The display order of every scene, so that a new scene finds the highest at once: a
  // load that makes thousands of scenes must not look through all of them for each one.
  std::multiset<std::int32_t> displayOrders_;
};

}  // namespace Edit
