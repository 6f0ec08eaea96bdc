// libFuzzer entry for the project reader. Each input is read as a project file into a
// fresh project, exactly as a file that the user opens, only from memory. A refused
// file is the normal result for most inputs; what counts as a finding is a crash, a
// sanitizer report, a hang, runaway memory, or a broken promise of the reader:
//
// - a refused file leaves the project empty (scene 0 alone, no objects, no plug-in data);
// - the scene that the project names as its current one exists, and it is the one shown;
// - otherwise each object section that the reader walks became an object or was
//   reported as left out, never both;
// - whatever was read is written out, and that text reads back whole and writes out
//   again byte for byte, as the writer promises.
//
// While a fault of the last two kinds is known and open, it is found again within
// seconds; SORVEL_FUZZ_ACCOUNTING=0 and SORVEL_FUZZ_ROUNDTRIP=0 turn those checks off so
// that a run goes on looking for something new.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "edit/EditService.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "effect/EffectService.h"
#include "system/IniFile.h"

namespace {

bool accounting = true;
bool roundTrip = true;

// Built once: registering every effect costs far more than reading one input.
Effect::EffectService& effects() {
  static Effect::EffectService service;
  return service;
}

[[noreturn]] void fault(const char* what, const std::string& detail = std::string()) {
  std::fprintf(stderr, "\n*** sorvel_project_fuzz: %s\n%s\n", what, detail.c_str());
  std::fflush(stderr);
  std::abort();
}

std::size_t objectCount(const Edit::Project& project) {
  std::size_t count = 0;
  for (const auto& entry : project.scenes()) {
    const Edit::Scene& scene = *entry.value;
    for (std::int32_t row = 0; row < scene.layerCount(); ++row) count += scene.getLayer(row).objects.size();
  }
  return count;
}

bool isEmpty(const Edit::Project& project) {
  return project.scenes().size() == 1 && project.findScene(0) && project.pluginData.empty() &&
         objectCount(project) == 0;
}

// Object sections [0], [1], ... up to the first gap, as the reader walks them.
std::size_t objectSections(System::IniFile& ini) {
  std::size_t count = 0;
  while (!ini.section(std::to_string(count)).empty()) ++count;
  return count;
}

std::size_t reportedObjects(const Edit::ProjectFile::LoadResult& result) {
  std::set<std::string> numbers;
  for (const auto& problem : result.problems) {
    if (problem.starts_with("object [")) numbers.insert(problem.substr(0, problem.find(']')));
  }
  return numbers.size();
}

// The reader as ProjectFile::load runs it, minus the file: false when it refused the text.
bool readInto(Edit::EditService& edit, std::string_view text, Edit::ProjectFile::LoadResult& result) {
  System::IniFile ini;
  ini.loadMemory(text);
  try {
    edit.replaceProject([&](Edit::Project& project) {
      Edit::ProjectFile::read(project, ini, edit.sceneDefaults(), effects(), result);
    });
  } catch (const std::exception&) {
    return false;
  }
  return true;
}

void checkRoundTrip(const Edit::Project& project) {
  const std::string first = Edit::ProjectFile::write(project);
  Edit::EditService again;
  Edit::ProjectFile::LoadResult result;
  if (!readInto(again, first, result)) fault("the writer's text does not read back", first);
  if (result.outcome != Edit::ProjectFile::LoadResult::Outcome::Loaded) {
    std::string problems;
    for (const auto& problem : result.problems) problems += problem + '\n';
    fault("the writer's text reads back with problems", problems + "--- text:\n" + first);
  }
  const std::string second = Edit::ProjectFile::write(again.project());
  if (second != first) {
    fault("the writer's text changes on a second round", "--- first:\n" + first + "--- second:\n" + second);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  // The program makes its data folders below XDG_DATA_HOME on the first path that it
  // expands; they must not land in the developer's own. One folder per user, kept from
  // run to run: libFuzzer ends the workers of -fork and -jobs without exit handlers, so
  // a folder per process would be left behind by each of them. Reading writes nothing
  // there but empty folders, so workers can share it.
  const std::filesystem::path dataHome =
      std::filesystem::temp_directory_path() / ("sorvel-fuzz-data-" + std::to_string(getuid()));
  std::error_code error;
  std::filesystem::create_directories(dataHome, error);
  if (error) fault("cannot make the data folder", dataHome.string());
  setenv("XDG_DATA_HOME", dataHome.c_str(), 1);
  const auto enabled = [](const char* name) {
    const char* setting = std::getenv(name);
    return !setting || std::strcmp(setting, "0") != 0;
  };
  accounting = enabled("SORVEL_FUZZ_ACCOUNTING");
  roundTrip = enabled("SORVEL_FUZZ_ROUNDTRIP");
  effects();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Edit::EditService edit;
  Edit::ProjectFile::LoadResult result;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const bool read = readInto(edit, text, result);
  if (edit.project().findScene(edit.project().currentScene) != edit.currentScene()) {
    fault("the project names another scene than the one it shows");
  }
  if (!read) {
    if (!isEmpty(edit.project())) fault("a refused file left something in the project");
    return 0;
  }
  if (accounting) {
    System::IniFile ini;
    ini.loadMemory(text);
    if (objectCount(edit.project()) + reportedObjects(result) != objectSections(ini)) {
      std::string problems;
      for (const auto& problem : result.problems) problems += problem + '\n';
      fault("objects kept and objects reported do not add up to the object sections", problems);
    }
  }
  if (roundTrip) checkRoundTrip(edit.project());
  return 0;
}
