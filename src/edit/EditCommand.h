// The verbs of the editor behind menus, shortcuts, buttons and drops. Each one writes
// its log line, opens an edit section with one undo record, registers what it is about
// to touch, changes the model and lets the section's close bring the rows into order
// and tell the windows. A command whose precondition fails returns without a log line
// and without a section. Targets always come from the current scene. Main thread only;
// the command holds no state beyond the services it was made with.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "edit/ObjectPaste.h"
#include "edit/ViewOptions.h"

namespace Effect {
class EffectBase;
class EffectItemNumber;
class EffectItemNumberGroup;
class EffectService;
}  // namespace Effect

namespace Edit {

class EditPrompt;
class EditSection;
class EditService;
class Object;
class Scene;
class UndoRecorder;
struct LayerInfo;

class EditCommand {
 public:
  EditCommand(EditService& edit, Effect::EffectService& effects, EditPrompt& prompt)
      : edit_(edit), effects_(effects), prompt_(prompt) {}

  // Objects. The targets are the selected objects, or the focus object alone.
  //
  // A new object of the define `key` where the user put it; `callback` may set up the
  // new object (a drop hands its file to the input effect). The object gets the focus.
  std::shared_ptr<Object> createObject(std::wstring_view key, std::int32_t layer, std::int32_t frame,
                                       const std::function<void(Object& object)>& callback = {});
  void deleteObject();
  // Splits each target with start < frame <= end in two.
  void splitObject(std::int32_t frame);
  // Copy and delete; with a frame range the range cut. `ripple` closes the gaps left.
  void cutObject(bool ripple);
  // Keeps only what lies inside the frame range.
  void trimObject();
  void copyObject();
  // The keyboard paste (at the cursor, below what is there), or at the row and frame of
  // the mouse.
  void pasteObject(const std::optional<ObjectPaste::Position>& mouse = std::nullopt);
  void duplicateObject();
  // Moves a copy of the one target's sound to free rows below it, one for each track,
  // and leaves the target with the picture.
  void separateAudioObject();

  // Section points. The first forms act on the object the user pointed at, the second
  // on the targets at the frame.
  void createSection(const std::shared_ptr<Object>& object, std::int32_t frame);
  void createSection(std::int32_t frame);
  void deleteSection(const std::shared_ptr<Object>& object, std::int32_t section);
  void deleteSection(std::int32_t frame);

  // Lengths and gaps; those that ask for a length ask the prompt.
  void removeObjectLeftGap();
  void insertNullFrame();
  void changeObjectLength();
  void changeSectionLength(const std::shared_ptr<Object>& object, std::int32_t section);
  void changeSectionSpaceEvenly(const std::shared_ptr<Object>& object);

  void setGroup();
  void clearGroup();

  // Switches of whole objects. With `allTargets` (Ctrl held) and `object` among the
  // targets, every target changes; otherwise `object` alone.
  void setEnableObject(const std::shared_ptr<Object>& object, bool enable, bool allTargets);
  void setLockObject(const std::shared_ptr<Object>& object, bool lock, bool allTargets);
  // Camera and clipping of the object the settings window shows: at most one is on.
  void setEnableCameraObject(const std::shared_ptr<Object>& object, bool enable);
  void setEnableClippingObject(const std::shared_ptr<Object>& object, bool enable);

  // Effects and items.
  //
  // Adds the effect `key` (behind `before` when one is given), replacing `before` with
  // `replace`.
  void setEffect(const std::shared_ptr<Object>& object, std::wstring_view key,
                 const std::shared_ptr<Effect::EffectBase>& before, bool replace);
  void removeEffect(const std::shared_ptr<Object>& object, const std::shared_ptr<Effect::EffectBase>& effect);
  void setEnableEffect(const std::shared_ptr<Object>& object, const std::shared_ptr<Effect::EffectBase>& effect,
                       bool enable);
  void setLockEffect(const std::shared_ptr<Object>& object, const std::shared_ptr<Effect::EffectBase>& effect,
                     bool lock);
  // Asks for the first parameter of the item's movement and stores it, on every member
  // of a linked group.
  void setMovementSettings(const std::shared_ptr<Object>& object, Effect::EffectItemNumber& item);
  // Links or unlinks the group; linking makes every member follow `item`'s movement.
  void toggleMovementGroup(const std::shared_ptr<Object>& object, Effect::EffectItemNumberGroup& group,
                           Effect::EffectItemNumber& item);

  // Rows, from the menu of the row headers.
  void insertLayer(std::int32_t layer);
  void deleteLayer(std::int32_t layer);
  // One step of a row drag: the timeline keeps one undo record open over all steps.
  void moveLayer(std::int32_t from, std::int32_t to);
  void setLayerHide(std::int32_t layer, bool hide);
  void setLayerLock(std::int32_t layer, bool lock);
  // Asks for the row's new name.
  void renameLayer(std::int32_t layer);
  // Hides every other row, or shows them all again when all of them were hidden.
  void toggleOtherLayersHide(std::int32_t layer);

  // The cursor to a time the prompt asks for.
  void jumpToFrame();

  // View switches: stored, never part of the project.
  void setViewOption(ViewOptions::Option option, bool enable);

 private:
  // The range cut and the trim: each target that the frame range cuts or holds is cut
  // at the range's ends; the pieces inside the range stay (`keepInside`) or go to the
  // clipboard, those outside the other way. The clipboard is emptied first.
  struct RangeCutResult {
    // The kept pieces that start at the range's start, and where their object started.
    std::vector<std::shared_ptr<Object>> movedBack;
    std::vector<std::int32_t> movedBackTo;
  };
  RangeCutResult cutToRange(EditSection& section, bool keepInside);
  void cutRange(bool ripple);
  // One section that changes the settings of one row, logged with the row and `value`.
  void changeLayerInfo(std::int32_t layer, const char* command, const char* format, int value,
                       const std::function<void(LayerInfo& info)>& change);
  // Camera and clipping: `flag` takes `enable`, and turning it on clears `other`.
  void setExclusiveFlag(const std::shared_ptr<Object>& object, bool enable, const char* command, const char* format,
                        bool Object::*flag, bool Object::*other);
  // One section for a switch over several objects, each changed by `change`.
  void switchObjects(const std::vector<std::shared_ptr<Object>>& objects,
                     const std::function<void(UndoRecorder* undo, Object& object)>& change);

  EditService& edit_;
  Effect::EffectService& effects_;
  EditPrompt& prompt_;
};

}  // namespace Edit
