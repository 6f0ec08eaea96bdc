// The drags of objects on the timeline: moving a selection across rows and frames,
// dragging the left or right edges of a selection, and dragging a section point. The
// timeline component holds the DragState and hands each mouse move in as a DragInput;
// every rule of where objects may come to stand is here. Main thread: begin and finish
// wherever the timeline opens the undo record, each step inside its own edit section,
// on rows that the previous section's update() has ordered.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "edit/DragState.h"

namespace Edit {

class Object;
class Scene;
class UndoRecorder;

// Where a drag begins.
struct DragStart {
  DragKind kind = DragKind::None;
  std::shared_ptr<Object> grabbedObject;
  std::int32_t grabbedPoint = 0;  // section point drags: 1 to the number of points
  std::int32_t layer = 0;         // row under the mouse
  std::int32_t frame = 0;         // frame under the mouse
  bool shift = false;
  // Section point drags: the point's own mark is under the mouse, not just its object.
  bool onPointMark = false;
};

// One mouse move of a drag and the view settings that the step depends on.
struct DragInput {
  std::int32_t layer = 0;  // row under the mouse
  std::int32_t frame = 0;  // frame under the mouse
  bool shift = false;
  bool snap = true;              // the LayerObjectMoveSnap setting
  bool tempoGrid = false;        // the tempo grid is shown, so it is a snap target
  std::int32_t layerHeight = 1;  // pixels of one row, for the Shift lock of a move
  // The deepest row that the bottom of a moved selection may reach: the end of the
  // timeline's row scroll range.
  std::int32_t maxLayer = 0;
};

class ObjectDrag {
 public:
  // Takes the selection's extent, registers every selected object with `undo` (may be
  // null) and, for edge drags, keeps the old edges. With Shift held on a point's own
  // mark, a section point drag takes the head of the object along when the mouse is
  // left of the point, else its tail.
  static DragState begin(const DragStart& start, const std::vector<std::shared_ptr<Object>>& selection,
                         UndoRecorder* undo);

  // One mouse move. Changes the objects and marks their rows; the caller's edit section
  // brings the rows into order at its close. Returns whether anything moved. The view's
  // scrolling when the mouse leaves it is the timeline's own business.
  static bool step(Scene& scene, DragState& drag, const std::vector<std::shared_ptr<Object>>& selection,
                   const DragInput& input);

  // The button's release. After an edge drag, the input effect of each selected object
  // hears that its edge moved, with the old edge, so that a file can keep its picture
  // in place; the timeline runs this in an edit section of its own. The old edges pair
  // with the selection by position, so a selection that has changed its size since the
  // start tells nothing. Leaves `drag` reset. Returns whether an effect asked for the
  // preview to be drawn again.
  // `scene`, where given, lets the inputs move their play position with a dragged edge.
  static bool finish(DragState& drag, const std::vector<std::shared_ptr<Object>>& selection,
                     Scene* scene = nullptr);
};

}  // namespace Edit
