#include "edit/ObjectDrag.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>
#include <utility>

#include "edit/Object.h"
#include "edit/Scene.h"
#include "edit/Snapping.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectBase.h"
#include "effect/ItemEvent.h"

namespace Edit {

namespace {

using Selection = std::vector<std::shared_ptr<Object>>;

// A point dragged with its tail has nothing to its right to stop at.
constexpr std::int64_t kUnboundedTail = 2000000000;
// The highest end an edge may reach: the frame after an end must still be a number.
constexpr std::int64_t kLastEnd = std::numeric_limits<std::int32_t>::max() - 1;

// Steps are worked out in 64 bits so that a far mouse cannot wrap a frame or a row; what
// lands in the model is brought back into range.
std::int32_t toInt32(std::int64_t value) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max()));
}

void markRow(Scene& scene, const Object& object) {
  Layer& row = scene.addLayers(object.layer);
  row.needsSorting = true;
  if (object.control) row.needsControlRebuild = true;
}

// The first object of the row, from the left, that meets first..last and is no part of
// the moving selection.
const Object* firstObstacle(const Scene& scene, std::int64_t layer, std::int64_t first, std::int64_t last) {
  const auto index = static_cast<std::int32_t>(layer);
  const Layer& row = scene.getLayer(index);
  for (std::size_t i = row.lowerBound(toInt32(first)); i < row.objects.size(); ++i) {
    const Object& object = *row.objects[i];
    if (object.start > last) break;
    if (object.layer == index && !object.selected) return &object;
  }
  return nullptr;
}

// The same from the right.
const Object* lastObstacle(const Scene& scene, std::int64_t layer, std::int64_t first, std::int64_t last) {
  const auto index = static_cast<std::int32_t>(layer);
  const Layer& row = scene.getLayer(index);
  for (std::size_t i = row.upperBound(toInt32(last)); i-- > 0;) {
    const Object& object = *row.objects[i];
    if (object.end < first) break;
    if (object.layer == index && !object.selected) return &object;
  }
  return nullptr;
}

// The total frame move nearest to `want` at which the selection, moved `rows` rows from
// where it began, meets no other object. Each side searches only as far as the user
// can see: to the left until the selection's last frame reaches the left edge of the
// view or its first frame reaches 0, to the right until its first frame reaches the
// right edge. Each side jumps from obstacle to obstacle, so the cost is the number of
// objects passed, not the number of frames.
std::optional<std::int64_t> freePlace(const Scene& scene, const SelectionExtent& extent, std::int64_t rows,
                                      std::int64_t want) {
  const std::int64_t first = extent.firstFrame;
  const std::int64_t last = extent.lastFrame;

  std::optional<std::int64_t> left;
  const std::int64_t leftLimit = want - std::max<std::int64_t>(0, std::min(last - scene.displayFrame, first) + want);
  for (std::int64_t m = want; m > leftLimit;) {
    const Object* obstacle = nullptr;
    std::int64_t spanLast = 0;
    for (const SelectionExtent::Row& row : extent.rows) {
      obstacle = firstObstacle(scene, row.layer + rows, row.first + m, row.last + m);
      if (obstacle) {
        spanLast = row.last;
        break;
      }
    }
    if (!obstacle) {
      left = m;
      break;
    }
    m = obstacle->start - 1 - spanLast;
  }

  std::optional<std::int64_t> right;
  const std::int64_t rightLimit =
      want - std::min<std::int64_t>(0, first - scene.visibleFrames - scene.displayFrame + want);
  for (std::int64_t m = want; m < rightLimit;) {
    for (const SelectionExtent::Row& row : extent.rows) m = std::max<std::int64_t>(m, -std::int64_t{row.first});
    const Object* obstacle = nullptr;
    std::int64_t spanFirst = 0;
    for (const SelectionExtent::Row& row : extent.rows) {
      obstacle = lastObstacle(scene, row.layer + rows, row.first + m, row.last + m);
      if (obstacle) {
        spanFirst = row.first;
        break;
      }
    }
    if (!obstacle) {
      right = m;
      break;
    }
    m = obstacle->end + 1 - spanFirst;
  }

  // At equal distance the selection goes right, in the direction time runs.
  if (left && right) return want - *left < *right - want ? left : right;
  return left ? left : right;
}

bool moveStep(Scene& scene, DragState& drag, const Selection& selection, const DragInput& input) {
  const SelectionExtent& extent = drag.extent;
  // What earlier steps applied; the collision test works on totals from the start.
  const std::int64_t movedRows = std::int64_t{drag.currentLayer} - drag.startLayer;
  const std::int64_t movedFrames = std::int64_t{drag.currentFrame} - drag.startFrame;

  std::int64_t rows = std::int64_t{input.layer} - drag.currentLayer;
  std::int64_t frames = std::int64_t{input.frame} - drag.currentFrame;
  if (input.snap) frames = Snapping::snapStep(scene, drag, toInt32(frames), input.tempoGrid);

  if (input.shift) {
    const std::int64_t framePixels = (std::abs(movedFrames + frames) * scene.displayZoom() + 5000) / 10000;
    const std::int64_t rowPixels = std::abs(movedRows + rows) * input.layerHeight;
    if (rowPixels > framePixels) {
      frames = -movedFrames;
    } else {
      rows = -movedRows;
    }
  }

  // Clamped as totals: the selection's bottom row within the scroll range, its top row
  // not above row 0, its first frame not before frame 0. Row 0 wins over the range.
  std::int64_t totalRows = std::min(movedRows + rows, std::int64_t{input.maxLayer} - extent.highestLayer);
  totalRows = std::max(totalRows, -std::int64_t{extent.lowestLayer});
  const std::int64_t totalFrames = std::max(movedFrames + frames, -std::int64_t{extent.firstFrame});
  rows = totalRows - movedRows;
  frames = totalFrames - movedFrames;
  if (rows == 0 && frames == 0) return false;

  // Without a free place on the wanted row, the step falls back row by row toward the
  // selection's own row, each time with the whole frame step, and on its own row it
  // gives up the frame step as well.
  const std::int64_t wantedFrames = frames;
  for (;;) {
    if (const auto place = freePlace(scene, extent, movedRows + rows, movedFrames + frames)) {
      frames = *place - movedFrames;
      break;
    }
    if (rows != 0) {
      rows += rows > 0 ? -1 : 1;
      frames = wantedFrames;
    } else {
      frames = 0;
    }
    if (rows == 0 && frames == 0) return false;
  }
  if (rows == 0 && frames == 0) return false;

  for (const std::shared_ptr<Object>& object : selection) {
    if (object->layer < 0) continue;
    if (rows != 0) scene.moveObject(object, toInt32(object->layer + rows));
    object->start = toInt32(object->start + frames);
    object->end = toInt32(object->end + frames);
    markRow(scene, *object);
  }
  drag.currentLayer = toInt32(drag.currentLayer + rows);
  drag.currentFrame = toInt32(drag.currentFrame + frames);
  return true;
}

// The step of one object's left edge, clamped so that the edge stays right of the
// previous object and of frame 0, and left of the first section point or the end.
std::int64_t clampLeftEdge(const Scene& scene, const Object& object, std::int64_t step) {
  if (step < 0) {
    const std::shared_ptr<Object>& previous = scene.previousObject(object);
    const std::int64_t lowest = previous ? std::int64_t{previous->end} + 1 - object.start : -std::int64_t{object.start};
    return std::max(step, lowest);
  }
  const std::int64_t highest =
      object.sections.empty() ? std::int64_t{object.end} - object.start : object.sections.front() - 1;
  return std::min(step, highest);
}

// The mirror for the right edge: left of the next object, right of the last section
// point or the start.
std::int64_t clampRightEdge(const Scene& scene, const Object& object, std::int64_t step) {
  if (step > 0) {
    const std::shared_ptr<Object>& next = scene.nextObject(object);
    const std::int64_t highest = next ? std::int64_t{next->start} - object.end - 1 : kLastEnd - object.end;
    return std::min(step, highest);
  }
  const std::int64_t lowest = object.sections.empty()
                                  ? std::int64_t{object.start} - object.end
                                  : std::int64_t{object.start} + object.sections.back() + 1 - object.end;
  return std::max(step, lowest);
}

bool edgeStep(Scene& scene, DragState& drag, const Selection& selection, const DragInput& input) {
  std::int64_t delta = std::int64_t{input.frame} - drag.currentFrame;
  if (input.snap) delta = Snapping::snapStep(scene, drag, toInt32(delta), input.tempoGrid);
  if (delta == 0 || selection.empty()) return false;

  const bool left = drag.kind == DragKind::LeftEdge;
  const auto clamp = [&](const Object& object, std::int64_t step) {
    return left ? clampLeftEdge(scene, object, step) : clampRightEdge(scene, object, step);
  };
  // The first object's clamp sets the step for all; the others may stop short of it
  // against their own neighbours, so their lengths can come to differ.
  const std::int64_t offered = clamp(*selection.front(), delta);
  if (offered == 0) return false;
  bool moved = false;
  for (const std::shared_ptr<Object>& object : selection) {
    if (object->layer < 0) continue;
    const std::int64_t step = clamp(*object, offered);
    if (step == 0) continue;
    if (left) {
      object->start = toInt32(object->start + step);
      // Offsets count from the start; the points stay where they are on the timeline.
      for (std::int32_t& offset : object->sections) offset = toInt32(offset - step);
    } else {
      object->end = toInt32(object->end + step);
    }
    markRow(scene, *object);
    moved = true;
  }
  drag.currentFrame = toInt32(drag.currentFrame + offered);
  return moved;
}

bool pointStep(Scene& scene, DragState& drag, const Selection& selection, const DragInput& input) {
  if (selection.size() != 1 || !drag.grabbedObject) return false;
  Object& object = *drag.grabbedObject;
  std::vector<std::int32_t>& sections = object.sections;
  const auto count = static_cast<std::int32_t>(sections.size());
  const std::int32_t point = drag.grabbedPoint;
  if (point < 1 || point > count) return false;

  std::int64_t delta = std::int64_t{input.frame} - drag.currentFrame;
  if (input.snap) delta = Snapping::snapStep(scene, drag, toInt32(delta), input.tempoGrid);

  // Offsets of the points, index point - 1 being the dragged one; each point keeps a
  // frame of distance from its neighbours, the start and the end.
  const auto at = [&](std::int32_t index) { return std::int64_t{sections[static_cast<std::size_t>(index)]}; };
  const std::int64_t offset = at(point - 1);
  std::int64_t lower =
      point == 1 ? std::min<std::int64_t>(1 - offset, 0) : std::min<std::int64_t>(at(point - 2) - offset + 1, 0);
  std::int64_t upper = point < count ? std::max<std::int64_t>(at(point) - offset - 1, 0)
                                     : std::max<std::int64_t>(std::int64_t{object.end} - offset - object.start - 1, 0);
  if (drag.sectionMode == SectionMode::Head) {
    const std::shared_ptr<Object>& previous = scene.previousObject(object);
    lower = previous ? std::int64_t{previous->end} + 1 - object.start : -std::int64_t{object.start};
  } else if (drag.sectionMode == SectionMode::Tail) {
    const std::shared_ptr<Object>& next = scene.nextObject(object);
    upper = next ? std::int64_t{next->start} - object.end - 1 : std::min(kUnboundedTail, kLastEnd - object.end);
  }
  const std::int64_t step = std::max(lower, std::min(upper, delta));
  if (step == 0) return false;

  const auto index = static_cast<std::size_t>(point - 1);
  switch (drag.sectionMode) {
    case SectionMode::Point:
      sections[index] = toInt32(offset + step);
      break;
    case SectionMode::Head:
      // The start moves with the point; everything right of it keeps its frame.
      object.start = toInt32(object.start + step);
      for (std::size_t i = index + 1; i < sections.size(); ++i) sections[i] = toInt32(sections[i] - step);
      break;
    case SectionMode::Tail:
      for (std::size_t i = index; i < sections.size(); ++i) sections[i] = toInt32(sections[i] + step);
      object.end = toInt32(object.end + step);
      break;
  }
  markRow(scene, object);
  drag.currentFrame = toInt32(drag.currentFrame + step);
  return true;
}

}  // namespace

DragState ObjectDrag::begin(const DragStart& start, const Selection& selection, UndoRecorder* undo) {
  DragState drag;
  drag.kind = start.kind;
  drag.grabbedObject = start.grabbedObject;
  drag.grabbedPoint = start.grabbedPoint;
  drag.startLayer = drag.currentLayer = start.layer;
  drag.startFrame = drag.currentFrame = start.frame;
  drag.extent = SelectionExtent::of(selection);
  if (undo) {
    for (const std::shared_ptr<Object>& object : selection) undo->addObjectUpdate(object);
  }
  if (start.kind == DragKind::LeftEdge || start.kind == DragKind::RightEdge) {
    drag.oldEdges.reserve(selection.size());
    for (const std::shared_ptr<Object>& object : selection) {
      drag.oldEdges.push_back(start.kind == DragKind::LeftEdge ? object->start : object->end);
    }
  }
  const Object* grabbed = start.grabbedObject.get();
  if (start.kind == DragKind::SectionPoint && start.shift && start.onPointMark && grabbed && start.grabbedPoint >= 1 &&
      start.grabbedPoint <= static_cast<std::int32_t>(grabbed->sections.size())) {
    drag.sectionMode = start.frame < grabbed->sectionBegin(start.grabbedPoint) ? SectionMode::Head : SectionMode::Tail;
  }
  return drag;
}

bool ObjectDrag::step(Scene& scene, DragState& drag, const Selection& selection, const DragInput& input) {
  switch (drag.kind) {
    case DragKind::Move:
      return moveStep(scene, drag, selection, input);
    case DragKind::LeftEdge:
    case DragKind::RightEdge:
      return edgeStep(scene, drag, selection, input);
    case DragKind::SectionPoint:
      return pointStep(scene, drag, selection, input);
    case DragKind::None:
      break;
  }
  return false;
}

bool ObjectDrag::finish(DragState& drag, const Selection& selection, Scene* scene) {
  // Reset first: an effect's event may throw, and the drag is over either way.
  const DragState ended = std::exchange(drag, DragState{});
  if (ended.kind != DragKind::LeftEdge && ended.kind != DragKind::RightEdge) return false;
  if (selection.size() != ended.oldEdges.size()) return false;
  bool redraw = false;
  for (std::size_t i = 0; i < selection.size(); ++i) {
    const std::shared_ptr<Object>& object = selection[i];
    if (object->effects.empty() || !object->effects.front()) continue;
    Effect::EffectBase& input = *object->effects.front();
    if (input.type() != Effect::EffectType::Input) continue;
    Effect::ItemEvent event;
    event.type =
        ended.kind == DragKind::LeftEdge ? Effect::ItemEvent::LeftEdgeDragged : Effect::ItemEvent::RightEdgeDragged;
    event.object = object;
    event.scene = scene;
    event.value = ended.oldEdges[i];
    input.itemEvent(event);
    redraw = redraw || event.redraw;
  }
  return redraw;
}

}  // namespace Edit
