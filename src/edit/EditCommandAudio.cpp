// Separating the sound of a video object onto rows of its own.
#include <algorithm>

#include "edit/EditCommand.h"
#include "edit/EditCommandSupport.h"
#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Object.h"
#include "edit/ObjectFactory.h"
#include "edit/Scene.h"
#include "edit/SceneSelection.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectBase.h"
#include "system/Log.h"

namespace Edit {

using namespace CommandSupport;

namespace {

// A media object whose input and output carry picture and sound, from a file that has
// sound.
bool hasSeparableSound(const Object& object) {
  if (object.effects.size() < 2) return false;
  const Effect::EffectBase& input = *object.effects[0];
  const Effect::EffectBase& output = *object.effects[1];
  return input.type() == Effect::EffectType::Input && input.media() == Effect::EffectMedia::Both &&
         output.media() == Effect::EffectMedia::Both && input.getMediaFlag(0) != 0;
}

// Gives the object the output effect `key` with its stored defaults and as many values
// as its points ask, and drops what no longer fits.
void setOutput(Object& object, Effect::EffectService& effects, const wchar_t* key) {
  EffectManager chain(object, effects);
  chain.addEffect(key);
  chain.pruneEffects();
}

}  // namespace

void EditCommand::separateAudioObject() {
  const auto targets = SceneSelection::editableTargets(*edit_.currentScene());
  if (targets.size() != 1 || !hasSeparableSound(*targets.front())) return;
  const std::shared_ptr<Object>& target = targets.front();
  const std::int32_t tracks = std::max(target->effects.front()->getMediaFlag(1), 1);
  System::Log::info(place("separateAudioObject").c_str(), "separate audio layer=%d", target->layer);
  EditSection section(edit_);
  Scene& scene = *section.scene();
  UndoRecorder* undo = section.recordUndo();
  section.setChangedObject(target);
  request(section, {Request::Update, Request::Rebuild, Request::Time, Request::Colour, Request::Text, Request::Object});

  const ObjectFactory factory(effects_);
  std::int32_t row = target->layer;
  for (std::int32_t track = 0; track < tracks; ++track) {
    do {
      ++row;
    } while (scene.objectInRange(row, target->start, target->end));
    std::shared_ptr<Object> copy = scene.createEmptyObject(row, target->start, target->end);
    factory.copyContent(*target, *copy);
    if (tracks > 1) {
      Effect::ItemEvent event;
      event.type = Effect::ItemEvent::AudioTrackChosen;
      event.object = copy;
      event.scene = &scene;
      event.value = track;
      copy->effects.front()->itemEvent(event);
    }
    if (undo) {
      undo->addObjectCreate(copy);
      undo->addObjectEffect(copy);
    }
    setOutput(*copy, effects_, L"音声再生");
  }
  if (undo) undo->addObjectEffect(target);
  setOutput(*target, effects_, L"標準描画");
}

}  // namespace Edit
