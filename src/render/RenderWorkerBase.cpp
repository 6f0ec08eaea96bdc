#include "render/RenderWorkerBase.h"

#include <algorithm>

#include "edit/Object.h"
#include "effect/EffectBase.h"
#include "system/Log.h"

namespace Render {

std::uint32_t RenderWorkerBase::sceneKey(std::int32_t sceneId, bool subRender) noexcept {
  return static_cast<std::uint32_t>(sceneId) + (subRender ? kSubRenderKeyOffset : 0u);
}

bool RenderWorkerBase::hasActiveEffects(const Edit::Object& object) {
  if (object.effects.empty()) return false;
  const Effect::EffectBase& first = *object.effects.front();
  if (first.type() == Effect::EffectType::Filter) {
    return std::any_of(object.effects.begin(), object.effects.end(), [](const auto& effect) { return !effect->disable; });
  }
  return !first.disable;
}

std::int32_t RenderWorkerBase::controlRangeEnd(const Edit::Object& object) {
  // A range of 0 reaches every layer there can be.
  constexpr std::int32_t kWholeRange = 1'000'000;
  const std::int32_t range = object.controlRange();
  return object.layer + (range == 0 ? kWholeRange : range);
}

// The key leaves the set when its walk ends, so that one scene shown at two moments of
// the same frame renders both times; only a walk inside its own walk is refused.
RenderWorkerBase::ActiveScene::ActiveScene(RenderWorkerBase& worker, std::uint32_t key)
    : worker_(worker), key_(key), entered_(worker.activeScenes_.insert(key).second) {
  if (!entered_) {
    System::Log::warn("Render::RenderWorkerBase::RenderSection::RenderSection", "recursive scene. index=%d num=%d",
                      static_cast<std::int32_t>(key_), static_cast<std::int32_t>(worker_.activeScenes_.size()));
  }
}

RenderWorkerBase::ActiveScene::~ActiveScene() {
  if (entered_) worker_.activeScenes_.erase(key_);
}

}  // namespace Render
