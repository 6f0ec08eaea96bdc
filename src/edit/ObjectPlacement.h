// Where objects go when rows open up or close: the frames of a new object on a click,
// closing stretches that became empty, and making room at the cursor. Used by the edit
// commands on the main thread inside an edit section; rows must be in order (the
// section's update() has run since their last change).
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace Edit {

class LayerObjectManager;
class Object;
class Scene;
class UndoRecorder;

// A stretch of one row that has become empty, both frames inclusive.
struct FrameRange {
  std::int32_t first = 0;
  std::int32_t last = 0;
};

// The stretches to close, by layer; the order of a layer's list does not matter.
using FrameRangeList = std::map<std::int32_t, std::vector<FrameRange>>;

class ObjectPlacement {
 public:
  struct Frames {
    std::int32_t start = 0;
    std::int32_t end = 0;
  };

  // The largest length that inserting empty frames accepts.
  static constexpr std::int32_t kMaxInsertLength = 2000000000;

  // The frames of a new object that the user puts at `frame` on `layer`: 80 pixels at
  // the scene's zoom, or, on an occupied frame, the next free gap to the right, cut
  // short where the gap is shorter.
  static Frames newObjectFrames(const Scene& scene, std::int32_t layer, std::int32_t frame);

  // Shifts the objects of each listed row to the left over its empty stretches: an
  // object moves by the summed length of the stretches that end before it.
  static void closeRanges(LayerObjectManager& rows, const FrameRangeList& ranges, UndoRecorder* recorder);

  // Closes the gap to the left of each target (to its predecessor, or to frame 0 for the
  // first object of a row); the scene's selection is cleared first.
  static void removeLeftGaps(Scene& scene, const std::vector<std::shared_ptr<Object>>& targets, UndoRecorder* recorder);

  // Moves every object that starts at or after the cursor `length` frames to the right
  // (0 to kMaxInsertLength); an object across the cursor stays. The length is cut so
  // that no end passes the largest frame.
  static void insertEmptyFrames(Scene& scene, std::int32_t length, UndoRecorder* recorder);
};

}  // namespace Edit
