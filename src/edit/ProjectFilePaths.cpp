// Media paths of a project that has moved: a file that lay below the old project
// folder and is gone now is looked for below the new one.
#include "edit/Object.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/Log.h"
#include "system/Text.h"

namespace Edit::ProjectFile {

namespace {

// The folder of a path with its separator, in the form items keep paths in.
std::wstring folderOf(const std::wstring& path) {
  return System::FileName::normalize(System::FileName::directoryPart(path)) + L'/';
}

bool startsWithIgnoringCase(const std::wstring& text, const std::wstring& prefix) {
  return text.size() >= prefix.size() &&
         System::Text::toLowerAscii(std::wstring_view(text).substr(0, prefix.size())) ==
             System::Text::toLowerAscii(prefix);
}

}  // namespace

std::int32_t updateEffectItemFilePath(Project& project, const std::wstring& storedPath, const std::wstring& openedPath,
                                      const std::function<bool()>& confirm) {
  if (System::FileName::fileName(storedPath).empty()) return 0;
  if (System::Text::toLowerAscii(storedPath) == System::Text::toLowerAscii(openedPath)) return 0;
  const std::wstring oldPrefix = folderOf(storedPath);
  const std::wstring newPrefix = folderOf(openedPath);
  bool asked = false;
  std::int32_t changed = 0;
  for (const auto& sceneEntry : project.scenes()) {
    const Scene& scene = *sceneEntry.value;
    for (std::int32_t row = 0; row < scene.layerCount(); ++row) {
      for (const auto& object : scene.getLayer(row).objects) {
        for (const auto& effect : object->effects) {
          for (const auto& item : effect->items()) {
            const std::optional<std::wstring> path = item->getFilePath();
            if (!path || path->empty() || !startsWithIgnoringCase(*path, oldPrefix) || System::File::exists(*path)) {
              continue;
            }
            if (!asked) {
              asked = true;
              if (!confirm()) return changed;
            }
            const std::wstring moved = newPrefix + path->substr(oldPrefix.size());
            System::Log::info("Edit::Project::updateEffectItemFilePath", L"update file path [%ls] -> [%ls]",
                              path->c_str(), moved.c_str());
            item->setFilePath(moved);
            ++changed;
          }
        }
      }
    }
  }
  return changed;
}

}  // namespace Edit::ProjectFile
