// The project file (`.svj2`, also backups and the resume files): one ini document with
// a [project] section, the scenes with their rows, objects and effect chains, and the
// data that plug-ins keep. The writer's output is canonical: what it writes reads back
// and writes again byte for byte. Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "edit/SceneDefaults.h"

namespace Effect {
class EffectService;
}
namespace System {
class IniFile;
}

namespace Edit {

class EditService;
class Project;

namespace ProjectFile {

// The version written into every file: format and build number.
inline constexpr std::int32_t kVersion = 2001801;

struct LoadResult {
  enum class Outcome {
    Loaded,        // everything in the file is in the project
    PartlyLoaded,  // some objects could not be read and were left out
    Unreadable,    // nothing could be used; the project is empty and has no file
  };
  Outcome outcome = Outcome::Loaded;
  // One line for each thing that could not be loaded, naming where it stood in the file.
  std::vector<std::string> problems;
  // One line for each thing worth knowing about a file that loaded all the same: it was
  // written by a newer version, or it began with a byte order mark.
  std::vector<std::string> warnings;
  // The path the file says the project had when it was saved, expanded.
  std::wstring storedPath;
};

// The whole file as text.
std::string write(const Project& project);
// Writes the file whole or not at all: a failed save leaves the previous file as it
// was. `file` in the text is the project's own path, which a backup does not change.
void save(const Project& project, const std::wstring& path);
// Save as: the project takes `path` as its file, then is written there.
void saveAs(Project& project, const std::wstring& path);

// Reads a document into an empty project. Objects that fail are left out and reported;
// anything else that fails throws, and the caller empties the project.
void read(Project& project, System::IniFile& ini, const SceneDefaults& defaults, Effect::EffectService& effects,
          LoadResult& result);
// Opens a project file into the edit service's project. Only a load that read the file
// makes `path` the project's file, so that a plain save can never overwrite a file that
// could not be read with an empty project. A folder, a missing file and a file that
// System::IniFile::readFile refuses are Unreadable, saying which.
LoadResult load(EditService& edit, Effect::EffectService& effects, const std::wstring& path);

// After a project has moved: media paths below the old project folder that no longer
// exist are moved below the new one. `confirm` is asked once, before the first change;
// false changes nothing. Returns how many paths changed.
std::int32_t updateEffectItemFilePath(Project& project, const std::wstring& storedPath, const std::wstring& openedPath,
                                      const std::function<bool()>& confirm);

}  // namespace ProjectFile

}  // namespace Edit
