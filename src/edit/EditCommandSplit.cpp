// The commands that cut objects apart: split at a frame, cut (with or without a frame
// range, with or without closing the gaps) and trim to the frame range.
#include <algorithm>
#include <unordered_map>

#include "edit/Clipboard.h"
#include "edit/EditCommand.h"
#include "edit/EditCommandSupport.h"
#include "edit/EditService.h"
#include "edit/Group.h"
#include "edit/Layer.h"
#include "edit/Object.h"
#include "edit/ObjectFactory.h"
#include "edit/ObjectPlacement.h"
#include "edit/ObjectSections.h"
#include "edit/Scene.h"
#include "edit/SceneSelection.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectBase.h"
#include "system/Log.h"

namespace Edit {

using namespace CommandSupport;

namespace {

// Where the pieces of a cut go: a piece that stays is a new object on the target's row,
// a piece that goes to the clipboard stands on no row.
enum class Keep { OnRow, Off };

std::shared_ptr<Object> makePiece(Scene& scene, const Object& source, Keep keep) {
  if (keep == Keep::Off) return std::make_shared<Object>();
  return scene.createEmptyObject(source.layer, source.start, source.end);
}

// The input effect of a piece works out its new playing position from how far the
// piece starts after the object that was cut.
void tellSplit(Scene& scene, const std::shared_ptr<Object>& piece, std::int32_t originalStart) {
  if (piece->effects.empty()) return;
  Effect::EffectBase& input = *piece->effects.front();
  if (input.type() != Effect::EffectType::Input) return;
  Effect::ItemEvent event;
  event.type = Effect::ItemEvent::Split;
  event.object = piece;
  event.scene = &scene;
  event.value = piece->start - originalStart;
  input.itemEvent(event);
}

struct Pieces {
  std::shared_ptr<Object> left;
  std::shared_ptr<Object> right;
};

Pieces cutAt(Scene& scene, Effect::EffectService& effects, const Object& source, std::int32_t frame, Keep left,
             Keep right, std::int32_t originalStart) {
  Pieces pieces{makePiece(scene, source, left), makePiece(scene, source, right)};
  ObjectSections::split(source, frame, *pieces.left, *pieces.right, scene, effects);
  tellSplit(scene, pieces.left, originalStart);
  tellSplit(scene, pieces.right, originalStart);
  return pieces;
}

// A piece leaving for the clipboard is a copy in the clipboard's sense: on no row, and
// naming the target's group without joining it, so a paste regroups the pieces.
void toClipboard(Clipboard& clipboard, const std::shared_ptr<Object>& piece, const Object& target) {
  piece->group = target.group;
  clipboard.add(piece);
}

}  // namespace

void EditCommand::splitObject(std::int32_t frame) {
  const auto targets = SceneSelection::editableTargets(*edit_.currentScene());
  const auto splittable = [frame](const std::shared_ptr<Object>& target) {
    return target->start < frame && frame <= target->end;
  };
  if (std::none_of(targets.begin(), targets.end(), splittable)) return;
  System::Log::info(place("splitObject").c_str(), "split object num=%d frame=%d", static_cast<int>(targets.size()),
                    frame);
  EditSection section(edit_);
  Scene& scene = *section.scene();
  UndoRecorder* undo = section.recordUndo();
  // The left parts of targets that shared a group share a new group, the right parts
  // another.
  std::unordered_map<const Group*, std::pair<std::shared_ptr<Group>, std::shared_ptr<Group>>> groups;
  for (const std::shared_ptr<Object>& target : targets) {
    if (!splittable(target)) continue;
    const Pieces pieces = cutAt(scene, effects_, *target, frame, Keep::OnRow, Keep::OnRow, target->start);
    if (undo) {
      undo->addObjectCreate(pieces.left);
      undo->addObjectCreate(pieces.right);
      undo->addObjectDelete(target);
    }
    SceneSelection::takeOut(scene, *target);
    if (target->group) {
      auto& [leftGroup, rightGroup] = groups[target->group.get()];
      if (!leftGroup) leftGroup = std::make_shared<Group>();
      if (!rightGroup) rightGroup = std::make_shared<Group>();
      if (undo) {
        undo->addObjectGroup(pieces.left);
        undo->addObjectGroup(pieces.right);
      }
      Group::join(leftGroup, *pieces.left);
      Group::join(rightGroup, *pieces.right);
    }
    if (scene.focusObject == target) {
      scene.focusObject = pieces.right;
      section.request(Request::Focus);
    }
  }
  request(section, {Request::Update, Request::Object, Request::Time});
}

void EditCommand::cutObject(bool ripple) {
  const Scene& current = *edit_.currentScene();
  if (current.selectionRangeStart >= 0 && current.selectionRangeEnd >= 0) {
    cutRange(ripple);
    return;
  }
  const auto targets = SceneSelection::editableTargets(current);
  if (targets.empty()) return;
  System::Log::info(place("cutObject").c_str(), "cut object num=%d", static_cast<int>(targets.size()));
  EditSection section(edit_);
  Scene& scene = *section.scene();
  UndoRecorder* undo = section.recordUndo();
  edit_.clipboard().set(ObjectFactory(effects_).copyObjects(targets));
  FrameRangeList ranges;
  for (const std::shared_ptr<Object>& target : targets) {
    ranges[target->layer].push_back({target->start, target->end});
    if (undo) undo->addObjectDelete(target);
    SceneSelection::takeOut(scene, *target);
  }
  SceneSelection::clear(scene);
  if (ripple) {
    scene.update();
    ObjectPlacement::closeRanges(scene, ranges, undo);
  }
  request(section, {Request::Update, Request::Reset, Request::Object, Request::Time});
}

EditCommand::RangeCutResult EditCommand::cutToRange(EditSection& section, bool keepInside) {
  Scene& scene = *section.scene();
  UndoRecorder* undo = section.recordUndo();
  Clipboard& clipboard = edit_.clipboard();
  clipboard.clear();
  const std::int32_t a = scene.selectionRangeStart;
  const std::int32_t b = scene.selectionRangeEnd + 1;
  const Keep inside = keepInside ? Keep::OnRow : Keep::Off;
  const Keep outside = keepInside ? Keep::Off : Keep::OnRow;
  RangeCutResult result;
  for (const std::shared_ptr<Object>& target : SceneSelection::editableTargets(scene)) {
    const std::int32_t s = target->start;
    const std::int32_t e = target->end;
    const bool inA = s < a && a <= e;
    const bool inB = s < b && b <= e;
    std::vector<std::shared_ptr<Object>> kept;
    std::vector<std::shared_ptr<Object>> cutAway;
    if (inA && inB) {
      // The middle piece is cut from a right part that exists only for the next cut.
      const Pieces first = cutAt(scene, effects_, *target, a, outside, Keep::Off, s);
      const Pieces second = cutAt(scene, effects_, *first.right, b, inside, outside, s);
      (keepInside ? kept : cutAway).push_back(second.left);
      (keepInside ? cutAway : kept).push_back(first.left);
      (keepInside ? cutAway : kept).push_back(second.right);
      if (keepInside) {
        result.movedBack.push_back(second.left);
        result.movedBackTo.push_back(s);
      }
    } else if (inA) {
      const Pieces pieces = cutAt(scene, effects_, *target, a, outside, inside, s);
      (keepInside ? cutAway : kept).push_back(pieces.left);
      (keepInside ? kept : cutAway).push_back(pieces.right);
      if (keepInside) {
        result.movedBack.push_back(pieces.right);
        result.movedBackTo.push_back(s);
      }
    } else if (inB) {
      const Pieces pieces = cutAt(scene, effects_, *target, b, inside, outside, s);
      (keepInside ? kept : cutAway).push_back(pieces.left);
      (keepInside ? cutAway : kept).push_back(pieces.right);
    } else if (!keepInside && s >= a && e < b) {
      cutAway.push_back(ObjectFactory(effects_).copyObject(*target));
    } else {
      continue;
    }
    for (const std::shared_ptr<Object>& piece : kept) {
      if (undo) undo->addObjectCreate(piece);
      if (target->group) {
        if (undo) undo->addObjectGroup(piece);
        Group::join(target->group, *piece);
      }
    }
    for (const std::shared_ptr<Object>& piece : cutAway) toClipboard(clipboard, piece, *target);
    if (undo) undo->addObjectDelete(target);
    SceneSelection::takeOut(scene, *target);
    // The focus follows as a split's does: to the right part where it stays.
    if (scene.focusObject == target) {
      scene.focusObject = kept.empty() ? nullptr : kept.back();
      section.request(Request::Focus);
    }
  }
  SceneSelection::clear(scene);
  return result;
}

void EditCommand::cutRange(bool ripple) {
  const auto targets = SceneSelection::editableTargets(*edit_.currentScene());
  if (targets.empty()) return;
  System::Log::info(place("cutObject").c_str(), "cut range object num=%d", static_cast<int>(targets.size()));
  EditSection section(edit_);
  Scene& scene = *section.scene();
  const std::int32_t a = scene.selectionRangeStart;
  const std::int32_t b = scene.selectionRangeEnd + 1;
  cutToRange(section, false);
  request(section, {Request::Update, Request::Reset, Request::Object, Request::Time});
  if (!ripple) return;
  FrameRangeList ranges;
  for (const std::shared_ptr<Object>& piece : edit_.clipboard().objects()) {
    ranges[piece->layer].push_back({piece->start, piece->end});
  }
  scene.update();
  ObjectPlacement::closeRanges(scene, ranges, section.recordUndo());
  scene.update();
  if (scene.cursorFrame > a) {
    const std::int32_t after = std::max(scene.cursorFrame - b, 0);
    scene.cursorFrame = std::max(std::min(a + after, scene.lastUsedFrame()), 0);
    section.request(Request::Frame);
  }
  scene.selectionRangeStart = -1;
  scene.selectionRangeEnd = -1;
  section.request(Request::Timeline);
}

void EditCommand::trimObject() {
  const Scene& current = *edit_.currentScene();
  if (current.selectionRangeStart < 0 || current.selectionRangeEnd < 0) return;
  const auto targets = SceneSelection::editableTargets(current);
  if (targets.empty()) return;
  System::Log::info(place("trimObject").c_str(), "clip object num=%d", static_cast<int>(targets.size()));
  EditSection section(edit_);
  Scene& scene = *section.scene();
  const RangeCutResult result = cutToRange(section, true);
  scene.update();
  UndoRecorder* undo = section.recordUndo();
  for (std::size_t i = 0; i < result.movedBack.size(); ++i) {
    const std::shared_ptr<Object>& part = result.movedBack[i];
    const std::int32_t shift = result.movedBackTo[i] - part->start;
    if (undo) undo->addObjectUpdate(part);
    part->start += shift;
    part->end += shift;
    Layer& row = scene.addLayers(part->layer);
    row.needsSorting = true;
    if (part->control) row.needsControlRebuild = true;
  }
  scene.selectionRangeStart = -1;
  scene.selectionRangeEnd = -1;
  request(section, {Request::Update, Request::Reset, Request::Object, Request::Time, Request::Timeline});
}

}  // namespace Edit
