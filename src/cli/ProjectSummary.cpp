#include "cli/ProjectSummary.h"

#include "edit/Object.h"
#include "edit/Project.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "system/NumberText.h"
#include "system/Text.h"

namespace Cli {

namespace {

std::string frameRate(const Edit::Scene& scene) {
  const double rate = scene.videoScale > 0 ? static_cast<double>(scene.videoRate) / scene.videoScale : 0.0;
  return System::NumberText::formatTrimmed(rate) + " fps (" + std::to_string(scene.videoRate) + "/" +
         std::to_string(scene.videoScale) + ")";
}

std::string chain(const Edit::Object& object) {
  std::string text;
  for (const auto& effect : object.effects) {
    if (!text.empty()) text += " > ";
    text += System::Text::toUtf8(effect->name());
    if (effect->disable) text += " (off)";
  }
  return text;
}

}  // namespace

std::string summarizeProject(const Edit::Project& project) {
  std::string text;
  for (const auto& scene : project.scenesInDisplayOrder()) {
    std::int32_t objects = 0;
    for (std::int32_t row = 0; row < scene->layerCount(); ++row) {
      for (const auto& object : scene->getLayer(row).objects) objects += object->layer == row ? 1 : 0;
    }
    text += "scene " + std::to_string(scene->id) + " \"" + System::Text::toUtf8(scene->name) + "\": " +
            std::to_string(scene->width) + "x" + std::to_string(scene->height) + ", " + frameRate(*scene) + ", " +
            std::to_string(scene->audioRate) + " Hz, " + std::to_string(scene->layerCount()) + " layers, " +
            std::to_string(objects) + " objects\n";
    for (std::int32_t row = 0; row < scene->layerCount(); ++row) {
      for (const auto& object : scene->getLayer(row).objects) {
        if (object->layer != row) continue;
        text += "  layer " + std::to_string(row) + " frames " + std::to_string(object->start) + "-" +
                std::to_string(object->end) + ": " + chain(*object) + "\n";
      }
    }
  }
  return text;
}

}  // namespace Cli
