// The commands on section points, lengths and gaps, and on the movements of items.
#include <algorithm>

#include "edit/EditCommand.h"
#include "edit/EditCommandSupport.h"
#include "edit/EditPrompt.h"
#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/ObjectPlacement.h"
#include "edit/ObjectSections.h"
#include "edit/Scene.h"
#include "edit/SceneSelection.h"
#include "edit/UndoRecorder.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemNumberGroup.h"
#include "effect/movement/MovementBase.h"
#include "system/Log.h"

namespace Edit {

using namespace CommandSupport;

namespace {

// The point that stands exactly at `frame`, 1 to n; 0 when none does.
std::int32_t pointAt(const Object& object, std::int32_t frame) {
  for (std::int32_t i = 1; i < object.sectionCount(); ++i) {
    if (object.sectionBegin(i) == frame) return i;
  }
  return 0;
}

std::int32_t pointCountOf(const Object& object) { return static_cast<std::int32_t>(object.sections.size()) + 2; }

}  // namespace

void EditCommand::createSection(const std::shared_ptr<Object>& object, std::int32_t frame) {
  if (!object || !object->canAddSection(frame)) return;
  System::Log::info(place("createSection").c_str(), "create section layer=%d frame=%d", object->layer, frame);
  EditSection section(edit_);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectSection(object);
  ObjectSections::addSection(*object, frame, ObjectSections::keyValuesAt(*object, frame));
  section.setChangedObject(object);
  requestPanels(section);
}

void EditCommand::createSection(std::int32_t frame) {
  const auto targets = SceneSelection::editableTargets(*edit_.currentScene());
  const auto fits = [frame](const std::shared_ptr<Object>& object) { return object->canAddSectionExact(frame); };
  if (std::none_of(targets.begin(), targets.end(), fits)) return;
  System::Log::info(place("createSection").c_str(), "create section frame=%d num=%d", frame,
                    static_cast<int>(targets.size()));
  EditSection section(edit_);
  UndoRecorder* undo = section.recordUndo();
  for (const std::shared_ptr<Object>& object : targets) {
    if (!fits(object)) continue;
    if (undo) undo->addObjectSection(object);
    ObjectSections::addSection(*object, frame, ObjectSections::keyValuesAt(*object, frame));
  }
  requestPanels(section);
}

void EditCommand::deleteSection(const std::shared_ptr<Object>& object, std::int32_t point) {
  if (!object || point < 1 || point >= object->sectionCount()) return;
  System::Log::info(place("deleteSection").c_str(), "delete section layer=%d frame=%d section=%d", object->layer,
                    object->sectionBegin(point), point);
  EditSection section(edit_);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectSection(object);
  ObjectSections::deleteSection(*object, point);
  section.setChangedObject(object);
  requestPanels(section);
}

void EditCommand::deleteSection(std::int32_t frame) {
  const auto targets = SceneSelection::editableTargets(*edit_.currentScene());
  const auto holds = [frame](const std::shared_ptr<Object>& object) { return pointAt(*object, frame) != 0; };
  if (std::none_of(targets.begin(), targets.end(), holds)) return;
  System::Log::info(place("deleteSection").c_str(), "delete section frame=%d num=%d", frame,
                    static_cast<int>(targets.size()));
  EditSection section(edit_);
  UndoRecorder* undo = section.recordUndo();
  for (const std::shared_ptr<Object>& object : targets) {
    const std::int32_t point = pointAt(*object, frame);
    if (point == 0) continue;
    if (undo) undo->addObjectSection(object);
    ObjectSections::deleteSection(*object, point);
  }
  requestPanels(section);
}

void EditCommand::removeObjectLeftGap() {
  const auto targets = SceneSelection::editableTargets(*edit_.currentScene());
  if (targets.empty()) return;
  System::Log::info(place("removeObjectLeftGap").c_str(), "remove left gap num=%d", static_cast<int>(targets.size()));
  EditSection section(edit_);
  ObjectPlacement::removeLeftGaps(*section.scene(), targets, section.recordUndo());
  requestFrames(section);
}

void EditCommand::insertNullFrame() {
  const Scene& scene = *edit_.currentScene();
  const std::optional<std::int32_t> length = prompt_.askFrameLength(
      L"空のフレームを挿入", scene.videoRate, scene.videoScale, 0, ObjectPlacement::kMaxInsertLength);
  if (!length) return;
  System::Log::info(place("insertNullFrame").c_str(), "insert null frame length=%d", *length);
  EditSection section(edit_);
  ObjectPlacement::insertEmptyFrames(*section.scene(), std::clamp(*length, 0, ObjectPlacement::kMaxInsertLength),
                                     section.recordUndo());
  requestFrames(section);
}

void EditCommand::changeObjectLength() {
  const Scene& scene = *edit_.currentScene();
  const auto targets = SceneSelection::editableTargets(scene);
  if (targets.empty()) return;
  const Object& first = *targets.front();
  const std::optional<std::int32_t> length = prompt_.askFrameLength(
      L"長さを変更", scene.videoRate, scene.videoScale, first.end - first.start + 1, ObjectPlacement::kMaxInsertLength);
  if (!length) return;
  System::Log::info(place("changeObjectLength").c_str(), "change object length num=%d length=%d",
                    static_cast<int>(targets.size()), *length);
  EditSection section(edit_);
  UndoRecorder* undo = section.recordUndo();
  for (const std::shared_ptr<Object>& object : targets) {
    if (undo) undo->addObjectUpdate(object);
    section.scene()->scaleObject(*object, std::max(*length, 1));
  }
  requestFrames(section);
}

void EditCommand::changeSectionLength(const std::shared_ptr<Object>& object, std::int32_t index) {
  if (!object || index < 0 || index >= object->sectionCount()) return;
  const Scene& scene = *edit_.currentScene();
  const std::optional<std::int32_t> length =
      prompt_.askFrameLength(L"中間点の長さを変更", scene.videoRate, scene.videoScale, object->sectionLength(index),
                             ObjectPlacement::kMaxInsertLength);
  if (!length || *length < 1) return;
  System::Log::info(place("changeSectionLength").c_str(), "change section length section=%d length=%d", index,
                    *length);
  EditSection section(edit_);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectUpdate(object);
  section.scene()->changeSectionLength(*object, index, *length);
  requestFrames(section);
}

void EditCommand::changeSectionSpaceEvenly(const std::shared_ptr<Object>& object) {
  if (!object || object->sections.empty()) return;
  System::Log::info(place("changeSectionSpaceEvenly").c_str(), "change section space evenly");
  EditSection section(edit_);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectUpdate(object);
  // Points already lie strictly inside, so length >= n + 2 and the offsets stay
  // ascending, at least 1 and below end - start.
  const std::int64_t length = std::int64_t{object->end} - object->start + 1;
  const auto count = static_cast<std::int64_t>(object->sections.size());
  for (std::int64_t i = 1; i <= count; ++i) {
    object->sections[static_cast<std::size_t>(i - 1)] = static_cast<std::int32_t>(i * length / (count + 1));
  }
  requestFrames(section);
}

void EditCommand::setMovementSettings(const std::shared_ptr<Object>& object, Effect::EffectItemNumber& item) {
  if (!object) return;
  std::vector<double> params = item.movementParams();
  const std::optional<double> value = prompt_.askNumber(item.movement().name(), params.empty() ? 0.0 : params.front(),
                                                        -2147483648.0, 2147483647.0);
  if (!value) return;
  System::Log::info(place("setMovementSettings").c_str(), "set movement settings layer=%d frame=%d", object->layer,
                    object->start);
  EditSection section(edit_);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectSection(object);
  if (params.empty()) params.push_back(0.0);
  params.front() = std::clamp(*value, -2147483648.0, 2147483647.0);
  Effect::EffectItemNumberGroup* group = item.group();
  if (group && group->linked()) {
    for (Effect::EffectItemNumber* member : group->members()) member->setMovementParams(params);
  } else {
    item.setMovementParams(params);
  }
  section.setChangedObject(object);
  request(section, {Request::Time, Request::Object});
}

void EditCommand::toggleMovementGroup(const std::shared_ptr<Object>& object, Effect::EffectItemNumberGroup& group,
                                      Effect::EffectItemNumber& item) {
  if (!object) return;
  System::Log::info(place("toggleMovementGroup").c_str(), "toggle move group layer=%d frame=%d", object->layer,
                    object->start);
  EditSection section(edit_);
  if (UndoRecorder* undo = section.recordUndo()) undo->addObjectSection(object);
  group.setLinked(!group.linked());
  if (group.linked()) {
    for (Effect::EffectItemNumber* member : group.members()) {
      if (member != &item) member->followMovementOf(item, pointCountOf(*object));
    }
  }
  section.setChangedObject(object);
  requestPanels(section);
}

}  // namespace Edit
