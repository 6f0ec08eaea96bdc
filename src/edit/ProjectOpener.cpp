#include "edit/ProjectOpener.h"

#include "dialog/MessageBox.h"
#include "edit/EditService.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/Log.h"
#include "system/Text.h"

namespace Edit {

ProjectOpener::ProjectOpener(EditService& edit, Effect::EffectService& effects) : edit_(edit), effects_(effects) {}

bool ProjectOpener::open(const std::wstring& path) {
  const std::wstring expanded = System::FileName::expand(path);
  if (!System::File::exists(expanded) || System::File::isDirectory(expanded)) {
    Dialog::showError(L"指定のファイルが存在しません");
    return false;
  }
  System::Log::info("Edit::EditService::loadProject", "load project file : %s", System::Text::toUtf8(expanded).c_str());
  const ProjectFile::LoadResult result = ProjectFile::load(edit_, effects_, expanded);
  switch (result.outcome) {
    case ProjectFile::LoadResult::Outcome::Unreadable:
      edit_.events().postErrorDialog(L"プロジェクトの読み込みに失敗しました");
      break;
    case ProjectFile::LoadResult::Outcome::PartlyLoaded:
      edit_.events().postErrorDialog(L"一部のオブジェクトの読み込みに失敗しました");
      [[fallthrough]];
    case ProjectFile::LoadResult::Outcome::Loaded:
      ProjectFile::updateEffectItemFilePath(edit_.project(), result.storedPath, expanded, [] {
        return Dialog::confirm(
            L"プロジェクトファイルのパスが変更されています。\n\n以前のプロジェクトパスの配下の指定ファイルが存在しない場合は\n"
            L"現在のプロジェクトパスの配下に変更しますか？",
            false);
      });
      break;
  }
  const Scene& current = *edit_.currentScene();
  System::Log::info("Edit::EditService::updateScene", L"set current scnene [%ls](%d)", current.name.c_str(),
                    current.id);
  return true;
}

void ProjectOpener::beginApplication(const std::wstring& project) {
  // A project that opened has told the windows of its scene already.
  if (!project.empty() && open(project)) return;
  edit_.events().sceneChanged.fire(edit_.project().currentScene);
}

}  // namespace Edit
