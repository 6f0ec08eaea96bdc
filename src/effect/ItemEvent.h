// What the timeline, the settings window and the edit commands tell an effect about
// its items and its object (EffectBase::itemEvent).
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace Edit {
class Object;
class Scene;
class UndoRecorder;
}  // namespace Edit

namespace Effect {

class EffectItem;

struct ItemEvent {
  enum Type : std::int32_t {
    ItemChanged = 1,       // an item with notifyChange was changed by the user
    FileHanded = 2,        // a file was dropped or chosen: `path`
    Split = 3,             // the object was split; `value` is how far this piece starts after it
    LeftEdgeDragged = 4,
    RightEdgeDragged = 5,
    AudioTrackChosen = 6,  // `value` is the track of a separated audio copy
    OpenFileMenu = 100,    // the menu of the file at the mouse position
  };

  Type type = ItemChanged;
  std::shared_ptr<Edit::Object> object;
  // The object's scene, whose frame rate and rows a resize of the object needs; null
  // where nothing may be resized.
  Edit::Scene* scene = nullptr;
  // Where a resize registers its object; null where no history is kept.
  Edit::UndoRecorder* undo = nullptr;
  EffectItem* item = nullptr;
  std::wstring path;
  std::int32_t value = 0;
  // Set by the effect when the preview must draw the object again.
  bool redraw = false;
};

}  // namespace Effect
