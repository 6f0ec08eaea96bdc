// What a drag on the timeline remembers between its mouse moves: the kind, the grabbed
// object, where the drag began and where its applied steps have brought it. Held by the
// timeline component and worked on by Edit::ObjectDrag and Edit::Snapping; a plain
// value of the main thread.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "edit/SelectionExtent.h"

namespace Edit {

class Object;

enum class DragKind : std::int32_t {
  None = 0,
  Move = 1,
  LeftEdge = 2,
  RightEdge = 3,
  SectionPoint = 4,
};

// How a dragged section point takes the rest of its object along.
enum class SectionMode : std::int32_t {
  Point = 0,  // the point moves alone
  Head = 1,   // the part left of the point moves with it, the object's start included
  Tail = 2,   // the part right of the point moves with it, the object's end included
};

struct DragState {
  DragKind kind = DragKind::None;
  SectionMode sectionMode = SectionMode::Point;
  // Snapping measures from this object; without one the drag does not snap.
  std::shared_ptr<Object> grabbedObject;
  // The dragged section point of kind SectionPoint, 1 to the number of points.
  std::int32_t grabbedPoint = 0;
  std::int32_t startLayer = 0;
  std::int32_t startFrame = 0;
  // The start moved by the steps applied so far, not by the mouse: a step that was
  // clamped leaves the rest of the mouse's way to the next step.
  std::int32_t currentLayer = 0;
  std::int32_t currentFrame = 0;
  // The selection at the start; a move tests its place as these spans shifted by the
  // total move, so the extent itself never changes during the drag.
  SelectionExtent extent;
  // Edge drags: the start (left edge) or end (right edge) of each selected object at the
  // start, in the order of the selection.
  std::vector<std::int32_t> oldEdges;
};

}  // namespace Edit
