// What the editor does to open a project file, and what it opens when it starts: the
// load with its log lines, the move of media paths when the project itself has moved,
// and the boxes that tell the user what could not be read. Main thread only; the entry
// point runs it at application begin, and the open commands of the menus will.
#pragma once

#include <string>

namespace Effect {
class EffectService;
}

namespace Edit {

class EditService;

class ProjectOpener {
 public:
  ProjectOpener(EditService& edit, Effect::EffectService& effects);

  // Opens `path` (variables expanded) without asking about the current project, and
  // makes it the project's file. A file that does not exist is shown as an error box,
  // and false leaves the project as it was; otherwise the project is replaced (empty
  // when the file could not be read, which a deferred box then says) and it is true.
  bool open(const std::wstring& path);

  // The edit service's part of application begin: the project that the command line
  // names is opened; with none (`project` empty), or when it does not exist, `scene
  // changed` fires for the current scene, so that the windows show the empty project.
  void beginApplication(const std::wstring& project);

 private:
  EditService& edit_;
  Effect::EffectService& effects_;
};

}  // namespace Edit
