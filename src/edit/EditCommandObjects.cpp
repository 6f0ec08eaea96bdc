// The commands on whole objects: create, delete, copy, paste, duplicate, groups and the
// switches of objects.
#include <algorithm>
#include <unordered_map>

#include "edit/Clipboard.h"
#include "edit/EditCommand.h"
#include "edit/EditCommandSupport.h"
#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Group.h"
#include "edit/Object.h"
#include "edit/ObjectFactory.h"
#include "edit/ObjectPlacement.h"
#include "edit/Scene.h"
#include "edit/SceneSelection.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectBase.h"
#include "effect/EffectService.h"
#include "system/Log.h"

namespace Edit {

using namespace CommandSupport;

std::shared_ptr<Object> EditCommand::createObject(std::wstring_view key, std::int32_t layer, std::int32_t frame,
                                                  const std::function<void(Object& object)>& callback) {
  Effect::EffectDefine& define = effects_.findEffect(key);
  const std::wstring name(key);
  System::Log::info(place("createObject").c_str(), L"create object [%ls] layer=%d frame=%d", name.c_str(), layer,
                    frame);
  EditSection section(edit_);
  Scene& scene = *section.scene();
  UndoRecorder* undo = section.recordUndo();
  const ObjectPlacement::Frames frames = ObjectPlacement::newObjectFrames(scene, layer, frame);
  std::shared_ptr<Object> object = ObjectFactory(effects_).createObject(scene, define, layer, frames.start, frames.end);
  if (callback) callback(*object);
  if (undo) undo->addObjectCreate(object);
  scene.focusObject = object;
  request(section, {Request::Update, Request::Object, Request::Time, Request::Focus});
  return object;
}

void EditCommand::deleteObject() {
  const auto targets = SceneSelection::editableTargets(*edit_.currentScene());
  if (targets.empty()) return;
  System::Log::info(place("deleteObject").c_str(), "delete object num=%d", static_cast<int>(targets.size()));
  EditSection section(edit_);
  Scene& scene = *section.scene();
  UndoRecorder* undo = section.recordUndo();
  for (const std::shared_ptr<Object>& target : targets) {
    if (undo) undo->addObjectDelete(target);
    SceneSelection::takeOut(scene, *target);
  }
  SceneSelection::clear(scene);
  request(section, {Request::Update, Request::Object, Request::Time});
}

void EditCommand::copyObject() {
  const auto targets = SceneSelection::targets(*edit_.currentScene());
  if (targets.empty()) return;
  System::Log::info(place("copyObject").c_str(), "copy object num=%d", static_cast<int>(targets.size()));
  edit_.clipboard().set(ObjectFactory(effects_).copyObjects(targets));
}

// Pasted and duplicated objects do not take the focus: the command tells nobody that
// the focus changed, so the settings window would go on showing the old object.
void EditCommand::pasteObject(const std::optional<ObjectPaste::Position>& mouse) {
  const Clipboard& clipboard = edit_.clipboard();
  if (clipboard.empty()) return;
  System::Log::info(place("pasteObject").c_str(), "paste object num=%d", static_cast<int>(clipboard.objects().size()));
  EditSection section(edit_);
  ObjectPaste(*section.scene(), effects_, section.recordUndo()).pasteObject(clipboard, mouse, false);
  request(section, {Request::Update, Request::Object, Request::Time});
}

void EditCommand::duplicateObject() {
  const auto targets = SceneSelection::targets(*edit_.currentScene());
  if (targets.empty()) return;
  System::Log::info(place("duplicateObject").c_str(), "duplicate object num=%d", static_cast<int>(targets.size()));
  EditSection section(edit_);
  ObjectPaste(*section.scene(), effects_, section.recordUndo()).duplicateObject(targets, false);
  request(section, {Request::Update, Request::Object, Request::Time});
}

void EditCommand::setGroup() {
  const std::vector<std::shared_ptr<Object>> selected = edit_.currentScene()->selectedObjects;
  if (selected.size() < 2) return;
  System::Log::info(place("setGroup").c_str(), "set group object num=%d", static_cast<int>(selected.size()));
  EditSection section(edit_);
  UndoRecorder* undo = section.recordUndo();
  const auto group = std::make_shared<Group>();
  for (const std::shared_ptr<Object>& object : selected) {
    if (undo) undo->addObjectGroup(object);
    Group::join(group, *object);
  }
}

void EditCommand::clearGroup() {
  const auto targets = SceneSelection::targets(*edit_.currentScene());
  if (targets.empty()) return;
  System::Log::info(place("clearGroup").c_str(), "clear group object");
  EditSection section(edit_);
  UndoRecorder* undo = section.recordUndo();
  for (const std::shared_ptr<Object>& object : targets) {
    if (undo) undo->addObjectGroup(object);
    Group::leave(*object);
  }
}

namespace {

// The objects a switch acts on: every target when Ctrl was held over one of them,
// otherwise the object alone.
std::vector<std::shared_ptr<Object>> switchedObjects(const Scene& scene, const std::shared_ptr<Object>& object,
                                                     bool allTargets) {
  if (allTargets) {
    auto targets = SceneSelection::targets(scene);
    if (std::find(targets.begin(), targets.end(), object) != targets.end()) return targets;
  }
  return {object};
}

}  // namespace

void EditCommand::switchObjects(const std::vector<std::shared_ptr<Object>>& objects,
                                const std::function<void(UndoRecorder* undo, Object& object)>& change) {
  EditSection section(edit_);
  UndoRecorder* undo = section.recordUndo();
  for (const std::shared_ptr<Object>& object : objects) change(undo, *object);
  if (objects.size() == 1) section.setChangedObject(objects.front());
  request(section, {Request::Refresh, Request::Time, Request::Colour, Request::Object});
}

void EditCommand::setEnableObject(const std::shared_ptr<Object>& object, bool enable, bool allTargets) {
  if (!object) return;
  const auto objects = switchedObjects(*edit_.currentScene(), object, allTargets);
  System::Log::info(place("setEnableObject").c_str(), "set enable effect num=%d enable=%d",
                    static_cast<int>(objects.size()), enable ? 1 : 0);
  switchObjects(objects, [enable](UndoRecorder* undo, Object& each) {
    // A filter object's chain is all filters, and switching the object means all of
    // them; any other object is switched by its top effect.
    const std::int32_t type = EffectManager::getObjectType(each);
    const bool filterObject = type >= 4 && type <= 6;
    const std::size_t count = filterObject ? each.effects.size() : std::min<std::size_t>(1, each.effects.size());
    for (std::size_t i = 0; i < count; ++i) {
      if (undo) undo->addEffectUpdate(each.effects[i]);
      each.effects[i]->disable = !enable;
    }
  });
}

void EditCommand::setLockObject(const std::shared_ptr<Object>& object, bool lock, bool allTargets) {
  if (!object) return;
  const auto objects = switchedObjects(*edit_.currentScene(), object, allTargets);
  System::Log::info(place("setLockObject").c_str(), "set lock effect num=%d lock=%d",
                    static_cast<int>(objects.size()), lock ? 1 : 0);
  switchObjects(objects, [lock](UndoRecorder* undo, Object& each) {
    for (const std::shared_ptr<Effect::EffectBase>& effect : each.effects) {
      if (undo) undo->addEffectUpdate(effect);
      effect->lock = lock;
    }
  });
}

void EditCommand::setEnableCameraObject(const std::shared_ptr<Object>& object, bool enable) {
  setExclusiveFlag(object, enable, "setEnableCameraObject", "set enable camera layer=%d frame=%d enable=%d",
                   &Object::camera, &Object::clipping);
}

void EditCommand::setEnableClippingObject(const std::shared_ptr<Object>& object, bool enable) {
  setExclusiveFlag(object, enable, "setEnableClippingObject", "set enable clipping layer=%d frame=%d enable=%d",
                   &Object::clipping, &Object::camera);
}

void EditCommand::setExclusiveFlag(const std::shared_ptr<Object>& object, bool enable, const char* command,
                                   const char* format, bool Object::*flag, bool Object::*other) {
  if (!object) return;
  System::Log::info(place(command).c_str(), format, object->layer, object->start, enable ? 1 : 0);
  EditSection section(edit_);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectFlag(object);
  (*object).*flag = enable;
  if (enable) (*object).*other = false;
  section.setChangedObject(object);
  requestPanels(section);
}

}  // namespace Edit
