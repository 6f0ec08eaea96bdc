// The commands on the effects of one object's chain.
#include "edit/EditCommand.h"
#include "edit/EditCommandSupport.h"
#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Object.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectBase.h"
#include "system/Log.h"

namespace Edit {

using namespace CommandSupport;

void EditCommand::setEffect(const std::shared_ptr<Object>& object, std::wstring_view key,
                            const std::shared_ptr<Effect::EffectBase>& before, bool replace) {
  if (!object) return;
  const std::wstring name(key);
  System::Log::info(place("setEffect").c_str(), L"set effect [%ls] layer=%d frame=%d", name.c_str(), object->layer,
                    object->start);
  EditSection section(edit_);
  section.setChangedObject(object);
  requestPanels(section);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectEffect(object);
  EffectManager chain(*object, effects_);
  chain.addEffect(key, before.get());
  if (replace && before) chain.removeEffect(*before);
  chain.pruneEffects();
}

void EditCommand::removeEffect(const std::shared_ptr<Object>& object, const std::shared_ptr<Effect::EffectBase>& effect) {
  if (!object || !effect) return;
  System::Log::info(place("removeEffect").c_str(), L"remove effect [%ls] layer=%d frame=%d", effect->name(),
                    object->layer, object->start);
  EditSection section(edit_);
  section.setChangedObject(object);
  requestPanels(section);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectEffect(object);
  EffectManager(*object, effects_).removeEffect(*effect);
}

void EditCommand::setEnableEffect(const std::shared_ptr<Object>& object,
                                  const std::shared_ptr<Effect::EffectBase>& effect, bool enable) {
  if (!object || !effect) return;
  System::Log::info(place("setEnableEffect").c_str(), L"set enable effect [%ls] layer=%d frame=%d enable=%d",
                    effect->name(), object->layer, object->start, enable ? 1 : 0);
  EditSection section(edit_);
  if (UndoRecorder* undo = section.recordUndo()) undo->addEffectUpdate(effect);
  effect->disable = !enable;
  section.setChangedObject(object);
  request(section, {Request::Refresh, Request::Time, Request::Colour, Request::Object});
}

void EditCommand::setLockEffect(const std::shared_ptr<Object>& object,
                                const std::shared_ptr<Effect::EffectBase>& effect, bool lock) {
  if (!object || !effect) return;
  System::Log::info(place("setLockEffect").c_str(), L"set lock effect [%ls] layer=%d frame=%d lock=%d",
                    effect->name(), object->layer, object->start, lock ? 1 : 0);
  EditSection section(edit_);
  UndoRecorder* undo = section.recordUndo();
  if (undo) undo->addEffectUpdate(effect);
  effect->lock = lock;
  // A media object's output is edited together with its input, so they lock together.
  if (effect->type() == Effect::EffectType::Input && object->effects.size() > 1) {
    if (undo) undo->addEffectUpdate(object->effects[1]);
    object->effects[1]->lock = lock;
  }
  section.setChangedObject(object);
  request(section, {Request::Refresh, Request::Time, Request::Colour, Request::Object});
}

}  // namespace Edit
