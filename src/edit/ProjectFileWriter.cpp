// The writer of the project file. Sections and keys come in a fixed order, so that the
// text of a project is always the same.
#include <unordered_map>

#include "edit/Group.h"
#include "edit/Object.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "system/Log.h"
#include "system/NumberText.h"
#include "system/ReplacingFile.h"
#include "system/Text.h"

namespace Edit::ProjectFile {

namespace {

class Writer {
 public:
  std::string text;

  void section(const std::string& name) { text += '[' + name + "]\r\n"; }
  void line(std::string_view key, std::string_view value) {
    text.append(key);
    text += '=';
    text.append(value);
    text += "\r\n";
  }
  void line(std::string_view key, std::int32_t value) { line(key, std::to_string(value)); }
  void line(std::string_view key, const std::wstring& value) { line(key, System::Text::toUtf8(value)); }
  void lineFloat(std::string_view key, double value) { line(key, System::NumberText::formatFixed(value)); }

  void project(const Project& project) {
    section("project");
    line("version", kVersion);
    line("file", project.file);
    line("display.scene", project.currentScene);
  }

  void scene(const Scene& scene) {
    section("scene." + std::to_string(sceneCount_++));
    line("scene", scene.id);
    if (!scene.name.empty()) line("name", scene.name);
    line("video.width", scene.width);
    line("video.height", scene.height);
    line("video.rate", scene.videoRate);
    line("video.scale", scene.videoScale);
    line("audio.rate", scene.audioRate);
    line("cursor.frame", scene.cursorFrame);
    line("display.frame", scene.displayFrame);
    line("display.layer", scene.displayLayer);
    line("display.zoom", scene.displayZoom());
    line("display.order", scene.displayOrder());
    line("display.camera", camera(scene.camera));
    line("display.grid.x", integers(scene.gridX));
    line("display.grid.y", integers(scene.gridY));
    line("display.grid.width", scene.gridWidth);
    line("display.grid.height", scene.gridHeight);
    lineFloat("display.grid.step", scene.gridStep);
    lineFloat("display.grid.range", scene.gridRange);
    lineFloat("display.tempo.bpm", scene.tempoBeatPerMinute);
    line("display.tempo.beat", scene.tempoBeat);
    lineFloat("display.tempo.offset", scene.tempoOffset);

    // Every row that exists is visited, so a named, locked or hidden row is kept even
    // when nothing lies on it or below it.
    for (std::int32_t row = 0; row < scene.layerCount(); ++row) {
      const Layer& layer = scene.getLayer(row);
      const LayerInfo& info = *layer.info;
      if (!info.name.empty() || info.lock || info.hide) {
        section("layer." + std::to_string(layerCount_++));
        line("layer", row);
        if (scene.id != 0) line("scene", scene.id);
        if (!info.name.empty()) line("name", info.name);
        if (info.lock) line("lock", 1);
        if (info.hide) line("hide", 1);
      }
      for (const auto& held : layer.objects) {
        if (held->layer == row) object(scene, *held);
      }
    }
  }

  void object(const Scene& scene, const Object& object) {
    const std::string number = std::to_string(objectCount_++);
    section(number);
    line("layer", object.layer);
    if (scene.id != 0) line("scene", scene.id);
    if (scene.focusObject.get() == &object) line("focus", 1);
    std::vector<std::int32_t> frames{object.start};
    for (const std::int32_t point : object.sections) frames.push_back(object.start + point);
    frames.push_back(object.end);
    line("frame", integers(frames));
    if (!object.camera) line("camera", 0);
    if (object.clipping) line("clipping", 1);
    if (object.group) {
      const auto [found, added] = groups_.try_emplace(object.group.get(), static_cast<std::int32_t>(groups_.size()) + 1);
      line("group", found->second);
    }
    for (std::size_t m = 0; m < object.effects.size(); ++m) {
      section(number + '.' + std::to_string(m));
      text += object.effects[m]->saveIniSectionParameter();
    }
  }

  void plugins(const Project& project) {
    std::int32_t k = 0;
    for (const auto& entry : project.pluginData) {
      if (!entry.value.inUse) continue;
      section("plugin." + std::to_string(k++));
      line("plugin.name", entry.key);
      for (const auto& value : entry.value.values) line(value.key, value.value);
    }
  }

 private:
  // Empty when the free camera stands where a new scene puts it.
  static std::string camera(const std::array<float, 6>& values) {
    if (values == std::array<float, 6>{0.0f, 0.0f, -1024.0f, 0.0f, 0.0f, 0.0f}) return {};
    return joined(values, [](float value) { return System::NumberText::formatFixed(value); });
  }

  static std::string integers(const std::vector<std::int32_t>& values) {
    return joined(values, [](std::int32_t value) { return std::to_string(value); });
  }

  template <class Values, class Format>
  static std::string joined(const Values& values, Format format) {
    std::string text;
    for (const auto& value : values) {
      if (!text.empty()) text += ',';
      text += format(value);
    }
    return text;
  }

  std::int32_t sceneCount_ = 0;
  std::int32_t layerCount_ = 0;
  std::int32_t objectCount_ = 0;
  // Group numbers mean something only within one file: the first group met is 1.
  std::unordered_map<const Group*, std::int32_t> groups_;
};

}  // namespace

std::string write(const Project& project) {
  Writer writer;
  writer.project(project);
  for (const auto& scene : project.scenesInDisplayOrder()) writer.scene(*scene);
  writer.plugins(project);
  return std::move(writer.text);
}

void save(const Project& project, const std::wstring& path) {
  System::Log::verbose("System::IniFile::Save::Save", L"saveFile : %ls", path.c_str());
  const std::string text = write(project);
  System::ReplacingFile file(path);
  file.write(text);
  file.commit();
}

void saveAs(Project& project, const std::wstring& path) {
  project.file = path;
  save(project, path);
}

}  // namespace Edit::ProjectFile
