#include "edit/ObjectPlacement.h"

#include <algorithm>
#include <limits>

#include "edit/LayerObjectManager.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "edit/SceneSelection.h"
#include "edit/UndoRecorder.h"

namespace Edit {

namespace {

// The frame after an object's end must still be a number.
constexpr std::int32_t kLastFrame = std::numeric_limits<std::int32_t>::max() - 1;

std::int64_t lengthOf(const FrameRange& range) { return std::int64_t{range.last} - range.first + 1; }

void markMoved(Layer& row, const Object& object) {
  row.needsSorting = true;
  if (object.control) row.needsControlRebuild = true;
}


}  // namespace

ObjectPlacement::Frames ObjectPlacement::newObjectFrames(const Scene& scene, std::int32_t layer, std::int32_t frame) {
  // 800,000 / zoom frames are 80 pixels: the zoom is pixels per frame times 10,000.
  std::int64_t start = frame;
  std::int64_t end = start + 800000 / scene.displayZoom();
  const Layer& row = scene.getLayer(layer);
  for (std::size_t i = row.lowerBound(frame); i < row.objects.size(); ++i) {
    const Object& object = *row.objects[i];
    if (object.layer != layer) continue;
    if (start < object.start) {
      end = std::min<std::int64_t>(end, object.start - 1);
      break;
    }
    // The frame is taken: the whole span steps past this object and tries the next gap.
    const std::int64_t step = std::int64_t{object.end} - start + 1;
    start += step;
    end += step;
  }
  return {static_cast<std::int32_t>(std::min<std::int64_t>(start, kLastFrame)),
          static_cast<std::int32_t>(std::min<std::int64_t>(end, kLastFrame))};
}

void ObjectPlacement::closeRanges(LayerObjectManager& rows, const FrameRangeList& ranges, UndoRecorder* recorder) {
  for (const auto& [layer, unsorted] : ranges) {
    if (unsorted.empty() || layer < 0 || layer >= rows.layerCount()) continue;
    std::vector<FrameRange> pairs = unsorted;
    std::sort(pairs.begin(), pairs.end(), [](const FrameRange& a, const FrameRange& b) { return a.first < b.first; });
    Layer& row = rows.addLayers(layer);
    std::int64_t shift = -lengthOf(pairs.front());
    std::size_t next = 1;
    for (std::size_t i = row.lowerBound(pairs.front().last); i < row.objects.size(); ++i) {
      const std::shared_ptr<Object>& object = row.objects[i];
      // A removed object (often the very one whose stretch is being closed) stays put.
      if (object->layer != layer) continue;
      while (next < pairs.size() && pairs[next].last < object->end) shift -= lengthOf(pairs[next++]);
      if (shift == 0) continue;
      if (recorder) recorder->addObjectUpdate(object);
      object->start = static_cast<std::int32_t>(object->start + shift);
      object->end = static_cast<std::int32_t>(object->end + shift);
      markMoved(row, *object);
    }
  }
}

void ObjectPlacement::removeLeftGaps(Scene& scene, const std::vector<std::shared_ptr<Object>>& targets,
                                     UndoRecorder* recorder) {
  FrameRangeList ranges;
  for (const std::shared_ptr<Object>& target : targets) {
    if (target->layer < 0) continue;
    if (const std::shared_ptr<Object>& previous = scene.previousObject(*target)) {
      if (previous->end + 1 < target->start) ranges[target->layer].push_back({previous->end + 1, target->start - 1});
    } else if (target->start >= 1) {
      ranges[target->layer].push_back({0, target->start - 1});
    }
  }
  SceneSelection::clear(scene);
  closeRanges(scene, ranges, recorder);
}

void ObjectPlacement::insertEmptyFrames(Scene& scene, std::int32_t length, UndoRecorder* recorder) {
  const std::int32_t cursor = scene.cursorFrame;
  const auto startsAtCursor = [&](const Layer& row) {
    return cursor <= 0 ? std::size_t{0} : row.upperBound(cursor - 1);
  };
  std::int64_t shift = std::clamp(length, 0, kMaxInsertLength);
  for (std::int32_t layer = 0; layer < scene.layerCount(); ++layer) {
    const Layer& row = scene.getLayer(layer);
    for (std::size_t i = startsAtCursor(row); i < row.objects.size(); ++i) {
      if (row.objects[i]->layer == layer) shift = std::min<std::int64_t>(shift, kLastFrame - row.objects[i]->end);
    }
  }
  if (shift <= 0) return;
  for (std::int32_t layer = 0; layer < scene.layerCount(); ++layer) {
    Layer& row = scene.addLayers(layer);
    for (std::size_t i = startsAtCursor(row); i < row.objects.size(); ++i) {
      const std::shared_ptr<Object>& object = row.objects[i];
      if (object->layer != layer) continue;
      if (recorder) recorder->addObjectUpdate(object);
      object->start = static_cast<std::int32_t>(object->start + shift);
      object->end = static_cast<std::int32_t>(object->end + shift);
      markMoved(row, *object);
    }
  }
}

}  // namespace Edit
