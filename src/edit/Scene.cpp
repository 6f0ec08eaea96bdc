#include "edit/Scene.h"

#include <algorithm>
#include <string>

#include "translate/Translate.h"

namespace Edit {

namespace {

std::wstring defaultName(std::int32_t id) {
  if (id == 0) return Translate::translate("Name", L"Root");
  return Translate::translate("Name", L"Scene") + std::to_wstring(id);
}

}  // namespace

Scene::Scene(std::int32_t sceneId, std::int32_t order, const SceneDefaults& defaults)
    : name(defaultName(sceneId)),
      id(sceneId),
      videoRate(defaults.videoRate),
      videoScale(defaults.videoScale),
      width(defaults.width),
      height(defaults.height),
      audioRate(defaults.audioRate),
      tempoBeatPerMinute(defaults.tempoBeatPerMinute),
      tempoBeat(defaults.tempoBeat),
      tempoOffset(defaults.tempoOffset),
      gridX(defaults.gridX),
      gridY(defaults.gridY),
      gridWidth(defaults.gridWidth),
      gridHeight(defaults.gridHeight),
      gridStep(defaults.gridStep),
      gridRange(defaults.gridRange),
      displayOrder_(order) {}

void Scene::setDisplayZoom(std::int32_t zoom) noexcept {
  const bool valid = std::find(kDisplayZooms.begin(), kDisplayZooms.end(), zoom) != kDisplayZooms.end();
  displayZoom_ = valid ? zoom : kDefaultDisplayZoom;
}

std::int32_t Scene::frameAtColumn(std::int32_t x) const noexcept {
  return static_cast<std::int32_t>(std::int64_t{x} * 10000 / displayZoom_) + displayFrame;
}

}  // namespace Edit
