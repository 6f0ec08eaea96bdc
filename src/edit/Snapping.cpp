#include "edit/Snapping.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>

#include "edit/DragState.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "edit/TempoGrid.h"

namespace Edit {

namespace {

std::int32_t toInt32(std::int64_t value) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

std::int32_t Snapping::range(const Scene& scene) { return 80000 / scene.displayZoom() + 1; }

std::int32_t Snapping::nearest(const Scene& scene, std::int32_t frame, std::int32_t best, bool tempoGrid) {
  const std::int64_t f = frame;
  std::int64_t reach = std::abs(std::int64_t{best});
  std::optional<std::int64_t> found;
  const auto offer = [&](std::int64_t target) {
    const std::int64_t distance = std::abs(target - f);
    if (distance < reach) {
      found = target;
      reach = distance;
    }
  };

  for (std::int32_t row = 0; row <= scene.lastUsedLayer() && reach >= 1; ++row) {
    const Layer& layer = scene.getLayer(row);
    for (std::size_t i = layer.lowerBound(toInt32(f - reach)); i < layer.objects.size(); ++i) {
      const Object& object = *layer.objects[i];
      // The reach only shrinks, so an object past it now has nothing nearer to offer.
      if (object.start > f + reach) break;
      if (object.selected || object.layer != row) continue;
      const auto points = static_cast<std::int32_t>(object.sections.size());
      for (std::int32_t point = 0; point <= points + 1; ++point) offer(object.sectionBegin(point));
    }
  }
  if (tempoGrid) {
    const std::int32_t line = TempoGrid::frameNear(scene, frame);
    if (line >= 0) offer(line);
  }
  // Last, so that the cursor only wins when it is strictly nearer than all the rest.
  offer(scene.cursorFrame);
  return found ? toInt32(*found - f) : best;
}

std::int32_t Snapping::snapFrame(const Scene& scene, std::int32_t frame, bool tempoGrid) {
  const std::int32_t reach = range(scene);
  const std::int32_t best = nearest(scene, frame, reach, tempoGrid);
  return std::abs(best) < reach ? toInt32(std::int64_t{frame} + best) : frame;
}

std::int32_t Snapping::snapStep(const Scene& scene, const DragState& drag, std::int32_t delta, bool tempoGrid) {
  if (!drag.grabbedObject) return delta;
  const Object& object = *drag.grabbedObject;
  const std::int32_t reach = range(scene);
  std::int32_t best = reach;
  const auto test = [&](std::int64_t frame) { best = nearest(scene, toInt32(frame + delta), best, tempoGrid); };
  switch (drag.kind) {
    case DragKind::Move:
      test(object.start);
      test(std::int64_t{object.end} + 1);
      break;
    case DragKind::LeftEdge:
      test(object.start);
      break;
    case DragKind::RightEdge:
      test(std::int64_t{object.end} + 1);
      break;
    case DragKind::SectionPoint:
      if (drag.grabbedPoint < 1 || drag.grabbedPoint > static_cast<std::int32_t>(object.sections.size())) break;
      test(object.sectionBegin(drag.grabbedPoint));
      break;
    case DragKind::None:
      break;
  }
  return std::abs(best) < reach ? toInt32(std::int64_t{delta} + best) : delta;
}

}  // namespace Edit
