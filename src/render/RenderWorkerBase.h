// What the video and audio render workers share: the scenes whose walk is under way on
// the worker's thread, through which a scene that contains itself, directly or through
// other scenes, is found instead of recursing without end. Render thread only.
#pragma once

#include <cstdint>
#include <unordered_set>

namespace Edit {
class Object;
}

namespace Render {

class RenderWorkerBase {
 public:
  // A sub-render of a scene (a scene change drawing the layers below it) walks the scene
  // beside its own running render, so its key is set apart from the scene's.
  static constexpr std::uint32_t kSubRenderKeyOffset = 1'000'000'000;
  static std::uint32_t sceneKey(std::int32_t sceneId, bool subRender) noexcept;

  // Whether an object's effects let it take part in a walk, pictures and sound alike: a
  // filter object while any of its filters is on, any other while its first effect is on.
  static bool hasActiveEffects(const Edit::Object& object);
  // The last layer a control object governs: its range below it, or every layer for 0.
  static std::int32_t controlRangeEnd(const Edit::Object& object);

  // Holds a scene's key in the active set for the length of its walk. A scene entered
  // while its own walk is under way is recursive: the warning is logged and entered()
  // is false, and the walk must end there with its target left clear.
  class ActiveScene {
   public:
    ActiveScene(RenderWorkerBase& worker, std::uint32_t key);
    ~ActiveScene();
    ActiveScene(const ActiveScene&) = delete;
    ActiveScene& operator=(const ActiveScene&) = delete;
    bool entered() const noexcept { return entered_; }

   private:
    RenderWorkerBase& worker_;
    std::uint32_t key_;
    bool entered_;
  };

 protected:
  RenderWorkerBase() = default;
  ~RenderWorkerBase() = default;

  // At the start of each top-level frame.
  void clearActiveScenes() noexcept { activeScenes_.clear(); }

 private:
  std::unordered_set<std::uint32_t> activeScenes_;
};

}  // namespace Render
