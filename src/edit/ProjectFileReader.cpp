// The reader of the project file. A broken object is left out and reported; a broken
// scene, row or project section ends the load, and the caller empties the project.
#include <algorithm>
#include <limits>
#include <map>

#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Group.h"
#include "edit/Object.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"
#include "system/Exception.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/IniFile.h"
#include "system/Log.h"
#include "system/Text.h"

namespace Edit::ProjectFile {

namespace {

constexpr const char* kLoadPlace = "Edit::Project::load";
constexpr const char* kObjectPlace = "Edit::LayerObjectManager::loadObjectIniFile";

// A damaged file must not make the program allocate rows without end: no row beyond
// this, and no more new rows than this in one load, over all scenes. No project has come
// near either.
constexpr std::int32_t kMaxLayer = 99999;
constexpr std::int64_t kMaxRowsPerLoad = 1000000;

std::int32_t row(const System::IniFile::SectionRef& section, const System::IniFile::VALUE& value) {
  const std::int32_t layer = value.toInt();
  if (layer < 0 || layer > kMaxLayer) {
    throw System::NoteException(kObjectPlace, "invalid layer number.",
                                value.note(section.name(), "layer") +
                                    System::Text::format(96, " (rows are numbered 0 to %d)", kMaxLayer));
  }
  return layer;
}

// What a scene section says of the scene's format. Later code divides by the rates and
// the scale and sizes images by the width and height.
struct SceneFormat {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::int32_t videoRate = 0;
  std::int32_t videoScale = 0;
  std::int32_t audioRate = 0;
};

std::vector<std::int32_t> integers(const System::IniFile::VALUE& value) {
  std::vector<std::int32_t> list;
  for (const auto& element : value.split(",")) list.push_back(element.toInt());
  return list;
}

class Reader {
 public:
  Reader(Project& project, System::IniFile& ini, const SceneDefaults& defaults, Effect::EffectService& effects,
         LoadResult& result)
      : project_(project), ini_(ini), defaults_(defaults), effects_(effects), result_(result) {}

  void read() {
    readProject();
    for (int i = 0;; ++i) {
      const auto section = ini_.section("scene", i);
      if (section.empty()) break;
      readScene(i, section);
    }
    for (int j = 0;; ++j) {
      const auto section = ini_.section("layer", j);
      if (section.empty()) break;
      readLayer(section);
    }
    for (int n = 0;; ++n) {
      const auto section = ini_.section(std::to_string(n));
      if (section.empty()) break;
      readObjectSection(n, section);
    }
    for (int k = 0;; ++k) {
      const auto section = ini_.section("plugin", k);
      if (section.empty()) break;
      readPlugin(section);
    }
  }

 private:
  void readProject() {
    if (!ini_.sections().contains("project")) {
      throw System::NoteException(kLoadPlace, "not found project section.",
                                  System::Text::toUtf8(ini_.fileName()));
    }
    const auto section = ini_.section("project");
    result_.storedPath = System::FileName::expand(section.find("file").toString(L""));
    project_.currentScene = section.find("display.scene").toInt(0);
    const std::int32_t version = section.find("version").tryInt().value_or(0);
    if (version > kVersion) {
      System::Log::warn(kLoadPlace, "project file version is newer than this program. [file=%d program=%d]", version,
                        kVersion);
      result_.warnings.push_back("the file was written by a newer version (" + std::to_string(version) +
                                 ") than this program (" + std::to_string(kVersion) + ")");
    }
  }

  std::shared_ptr<Scene> scene(std::int32_t id) { return project_.addScene(id, defaults_); }

  // Rows are grown through here, which keeps the count of new rows within the budget.
  Layer& grow(Scene& scene, std::int32_t index, const System::IniFile::SectionRef& section,
             const System::IniFile::VALUE& value) {
    rowsAdded_ += std::max<std::int64_t>(0, std::int64_t{index} + 1 - scene.layerCount());
    if (rowsAdded_ > kMaxRowsPerLoad) {
      throw System::NoteException(
          kObjectPlace, "invalid layer number.",
          value.note(section.name(), "layer") +
              System::Text::format(128, " (row %d of scene %d passes the budget of %lld new rows in one load)", index,
                                   scene.id, static_cast<long long>(kMaxRowsPerLoad)));
    }
    return scene.addLayers(index);
  }

  // A value that does not read ends the load; a format that later code cannot divide by
  // refuses only this scene, which objects and rows that name it then bring back with a
  // new scene's values.
  void readScene(int index, const System::IniFile::SectionRef& section) {
    const std::int32_t id = section.getValue("scene").toInt();
    const SceneFormat format = readFormat(section);
    try {
      checkFormat(section, format);
    } catch (const std::exception& exception) {
      System::Log::warn(kLoadPlace, "load scene failed. [scene.%d](%s)", index, exception.what());
      result_.problems.push_back("scene." + std::to_string(index) + ": " + System::Text::singleLine(exception.what()));
      result_.outcome = LoadResult::Outcome::PartlyLoaded;
      return;
    }
    const std::shared_ptr<Scene> target = scene(id);
    Scene& s = *target;
    const std::wstring name = section.find("name").toString(L"");
    if (!name.empty()) s.name = name;
    s.width = format.width;
    s.height = format.height;
    s.videoRate = format.videoRate;
    s.videoScale = format.videoScale;
    s.audioRate = format.audioRate;
    s.cursorFrame = section.find("cursor.frame").toInt(0);
    s.displayFrame = section.find("display.frame").toInt(0);
    s.displayLayer = section.find("display.layer").toInt(0);
    s.setDisplayZoom(section.find("display.zoom").toInt(s.displayZoom()));
    project_.setDisplayOrder(s, section.find("display.order").toInt(s.id));
    const auto camera = section.find("display.camera").split(",");
    if (camera.size() == s.camera.size()) {
      std::array<float, 6> values{};
      bool readable = true;
      for (std::size_t i = 0; i < values.size() && readable; ++i) {
        const auto value = camera[i].tryFloat();
        readable = value.has_value();
        if (value) values[i] = *value;
      }
      if (readable) s.camera = values;
    }
    if (!section.find("display.grid.x").empty()) s.gridX = integers(section.find("display.grid.x"));
    if (!section.find("display.grid.y").empty()) s.gridY = integers(section.find("display.grid.y"));
    s.gridWidth = section.find("display.grid.width").toInt(s.gridWidth);
    s.gridHeight = section.find("display.grid.height").toInt(s.gridHeight);
    s.gridStep = section.find("display.grid.step").toFloat(s.gridStep);
    s.gridRange = section.find("display.grid.range").toFloat(s.gridRange);
    s.tempoBeatPerMinute = section.find("display.tempo.bpm").toFloat(s.tempoBeatPerMinute);
    s.tempoBeat = section.find("display.tempo.beat").toInt(s.tempoBeat);
    s.tempoOffset = section.find("display.tempo.offset").toFloat(s.tempoOffset);
  }

  static SceneFormat readFormat(const System::IniFile::SectionRef& section) {
    SceneFormat format;
    format.width = section.getValue("video.width").toInt();
    format.height = section.getValue("video.height").toInt();
    format.videoRate = section.getValue("video.rate").toInt();
    format.videoScale = section.getValue("video.scale").toInt();
    format.audioRate = section.find("audio.rate").toInt(48000);
    return format;
  }

  // Rates and the scale must be above 0, sizes at least 0; anything else is refused with
  // the text of a value that does not read.
  static void checkFormat(const System::IniFile::SectionRef& section, const SceneFormat& format) {
    const struct {
      const char* key;
      std::int32_t value;
      std::int32_t lowest;
    } limits[] = {
        {"video.width", format.width, 0},       {"video.height", format.height, 0},
        {"video.rate", format.videoRate, 1},    {"video.scale", format.videoScale, 1},
        {"audio.rate", format.audioRate, 1},
    };
    for (const auto& limit : limits) {
      if (limit.value >= limit.lowest) continue;
      throw System::NoteException(kLoadPlace, "ini file parameter invalid format(int).",
                                  section.find(limit.key).note(section.name(), limit.key));
    }
  }

  void readLayer(const System::IniFile::SectionRef& section) {
    const std::shared_ptr<Scene> target = scene(section.find("scene").toInt(0));
    const System::IniFile::VALUE& layerValue = section.getValue("layer");
    const std::int32_t index = row(section, layerValue);
    LayerInfo& info = *grow(*target, index, section, layerValue).info;
    info.index = index;
    info.name = section.find("name").toString(L"");
    info.lock = section.find("lock").toInt(0) != 0;
    info.hide = section.find("hide").toInt(0) != 0;
  }

  void readObjectSection(int number, const System::IniFile::SectionRef& section) {
    try {
      const std::shared_ptr<Scene> target = scene(section.find("scene").toInt(0));
      // Read before the object exists, so that a bad value cannot leave a reported
      // failure standing in the row.
      const bool focus = section.find("focus").toInt(0) != 0;
      const std::shared_ptr<Object> object = readObject(*target, number, section);
      if (focus) target->focusObject = object;
    } catch (const std::exception& exception) {
      System::Log::warn(kLoadPlace, "load object failed. [%d](%s)", number, exception.what());
      result_.problems.push_back("object [" + std::to_string(number) + "]: " + System::Text::singleLine(exception.what()));
      result_.outcome = LoadResult::Outcome::PartlyLoaded;
    }
  }

  // Frames and section points are checked before the object exists; from the switches
  // on, a failure takes the object out of its row again.
  std::shared_ptr<Object> readObject(Scene& scene, int number, const System::IniFile::SectionRef& section) {
    const System::IniFile::VALUE& layerValue = section.getValue("layer");
    const std::int32_t layer = row(section, layerValue);
    const System::IniFile::VALUE& frameValue = section.getValue("frame");
    const std::string frameNote = frameValue.note(section.name(), "frame");
    const std::vector<std::int32_t> frames = integers(frameValue);
    if (frames.size() < 2) throw System::NoteException(kObjectPlace, "not enough frame number list.", frameNote);
    const std::int32_t start = frames.front();
    const std::int32_t end = frames.back();
    // Frames count from 0, and the frame after the end must still be a number.
    if (start > end || start < 0 || end == std::numeric_limits<std::int32_t>::max()) {
      throw System::NoteException(kObjectPlace, "invalid frame number list.", frameNote);
    }

    grow(scene, layer, section, layerValue);
    std::shared_ptr<Object> object = scene.createEmptyObject(layer, start, end);
    try {
      object->camera = section.find("camera").toInt(1) != 0;
      object->clipping = section.find("clipping").toInt(0) != 0;
      for (std::size_t i = 1; i + 1 < frames.size(); ++i) addSectionPoint(*object, frames[i], frameNote);
      const std::int32_t group = section.find("group").toInt(0);
      if (group != 0) {
        std::shared_ptr<Group>& joined = groups_[group];
        if (!joined) joined = std::make_shared<Group>();
        Group::join(joined, *object);
      }
      readEffects(*object, number);
    } catch (...) {
      object->layer = -1;
      Group::leave(*object);
      scene.addLayers(layer).needsCompaction = true;
      throw;
    }
    return object;
  }

  // A section point stands strictly inside the section that holds it.
  static void addSectionPoint(Object& object, std::int32_t frame, const std::string& note) {
    std::vector<std::int32_t>& points = object.sections;
    const std::int32_t offset = frame - object.start;
    const auto after = std::upper_bound(points.begin(), points.end(), offset);
    const std::int32_t first = after == points.begin() ? 0 : *(after - 1);
    const std::int32_t limit = after == points.end() ? object.end - object.start : *after;
    if (offset - first < 1 || offset >= limit) {
      throw System::NoteException(kObjectPlace, "invalid frame number list.", note);
    }
    points.insert(after, offset);
  }

  void readEffects(Object& object, int number) {
    EffectManager chain(object, effects_);
    const auto pointCount = static_cast<std::int32_t>(object.sections.size()) + 2;
    for (int m = 0;; ++m) {
      const auto section = ini_.section(std::to_string(number) + '.' + std::to_string(m));
      if (section.empty()) {
        if (m == 0) throw System::NoteException("Edit::Object::loadEffectIniFile", "no effect defined.");
        break;
      }
      Effect::EffectDefine& define = effects_.findEffectOrOldName(section.getValue("effect.name").toString());
      const std::size_t slot = chain.setEffectByDefine(define);
      Effect::EffectBase& effect = *object.effects.at(slot);
      effect.loadIniSectionParameter(section);
      for (const auto& item : effect.items()) {
        if (auto* numeric = dynamic_cast<Effect::EffectItemNumber*>(item.get())) numeric->resizeValues(pointCount);
      }
    }
  }

  // Data of plug-ins that are not installed is kept as it stands and written back.
  void readPlugin(const System::IniFile::SectionRef& section) {
    const std::wstring name = section.find("plugin.name").toString(L"");
    if (name.empty()) return;
    PluginData& data = project_.pluginData.tryEmplace(name).first->value;
    data.inUse = true;
    for (const auto& entry : section) {
      if (entry.key == "plugin.name") continue;
      data.values.erase(entry.key);
      data.values.tryEmplace(entry.key, entry.value.text);
    }
  }

  Project& project_;
  System::IniFile& ini_;
  const SceneDefaults& defaults_;
  Effect::EffectService& effects_;
  LoadResult& result_;
  // Group numbers of this file; the same number in two scenes is one group.
  std::map<std::int32_t, std::shared_ptr<Group>> groups_;
  std::int64_t rowsAdded_ = 0;
};

}  // namespace

void read(Project& project, System::IniFile& ini, const SceneDefaults& defaults, Effect::EffectService& effects,
          LoadResult& result) {
  Reader(project, ini, defaults, effects, result).read();
}

LoadResult load(EditService& edit, Effect::EffectService& effects, const std::wstring& path) {
  LoadResult result;
  const auto unreadable = [&](const std::string& problem) {
    result.outcome = LoadResult::Outcome::Unreadable;
    result.problems.push_back(problem);
    return result;
  };
  if (System::File::isDirectory(path)) return unreadable("this is a folder, not a project file");
  if (!System::File::exists(path)) return unreadable("the file does not exist");
  try {
    // Read inside the replacement, so that a file refused unread leaves an empty
    // project like any other that cannot be read.
    edit.replaceProject([&](Project& project) {
      System::IniFile ini;
      ini.readFile(path);
      if (ini.byteOrderMarkSkipped()) {
        System::Log::warn(kLoadPlace, "project file starts with a byte order mark, which was skipped.");
        result.warnings.push_back("the file starts with a UTF-8 byte order mark, which was skipped");
      }
      read(project, ini, edit.sceneDefaults(), effects, result);
    });
  } catch (const std::exception& exception) {
    return unreadable(System::Text::singleLine(exception.what()));
  }
  edit.project().file = path;
  return result;
}

}  // namespace Edit::ProjectFile
