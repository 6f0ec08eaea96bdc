// Places copies of objects back on the rows: pasting from the clipboard at the mouse or
// the cursor, and duplicating a selection below itself. A paste never overlaps what is
// there; it moves right, or down for the keyboard and duplicates, until it fits. Made
// for one command on the main thread inside an edit section, on rows in order.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Effect {
class EffectService;
}

namespace Edit {

class Clipboard;
class Object;
class Scene;
class UndoRecorder;
struct SelectionExtent;

class ObjectPaste {
 public:
  struct Position {
    std::int32_t layer = 0;
    std::int32_t frame = 0;
  };

  // `recorder` may be null; otherwise every placed object is registered with it.
  ObjectPaste(Scene& scene, Effect::EffectService& effects, UndoRecorder* recorder)
      : scene_(scene), effects_(effects), recorder_(recorder) {}

  // Puts the copies with their top row at `layer` and their first frame at `frame`, or
  // as little further right as it takes for every row to be free. Returns the new
  // objects in the order of the copies.
  std::vector<std::shared_ptr<Object>> pasteAt(const std::vector<std::shared_ptr<Object>>& copies, std::int32_t layer,
                                               std::int32_t frame, bool focus);
  // Whether the extent, moved by `df` frames and `dl` rows, meets no object. On a
  // collision `dl` grows by one, so a caller can loop until a row offset is free.
  bool isFree(const SelectionExtent& extent, std::int32_t df, std::int32_t& dl) const;
  // Puts a new object for each copy, moved by `dl` rows and `df` frames, without any
  // test. Copies that shared a group share a new group of their own; with `focus` the
  // first new object becomes the scene's focus object.
  std::vector<std::shared_ptr<Object>> placeAt(const std::vector<std::shared_ptr<Object>>& copies, std::int32_t dl,
                                               std::int32_t df, bool focus);

  // The paste of the keyboard: at the row and frame under the mouse when it is over the
  // timeline; otherwise at the cursor (or at the copies' own frames when the cursor
  // lies among them), as many rows down as it takes to be free.
  std::vector<std::shared_ptr<Object>> pasteObject(const Clipboard& clipboard, const std::optional<Position>& mouse,
                                                   bool focus);
  // Copies of the targets at their own frames, on the first rows below them that are
  // free. The clipboard is not touched.
  std::vector<std::shared_ptr<Object>> duplicateObject(const std::vector<std::shared_ptr<Object>>& targets, bool focus);

 private:
  // The first object met by the extent moved by df and dl, with the first frame of the
  // span it met; null when everything is free.
  const Object* findCollision(const SelectionExtent& extent, std::int64_t df, std::int32_t dl,
                              std::int64_t& spanFirst) const;
  std::vector<std::shared_ptr<Object>> placeBelow(const std::vector<std::shared_ptr<Object>>& copies,
                                                  const SelectionExtent& extent, std::int32_t df, bool focus);

  Scene& scene_;
  Effect::EffectService& effects_;
  UndoRecorder* recorder_;
};

}  // namespace Edit
