#include "edit/Layer.h"

#include <algorithm>

#include "edit/Object.h"

namespace Edit {

Layer::Layer(std::int32_t index) : info(std::make_shared<LayerInfo>()) { info->index = index; }

void Layer::update(std::int32_t row) {
  if (needsCompaction) {
    std::erase_if(objects, [row](const std::shared_ptr<Object>& object) { return object->layer != row; });
    needsCompaction = false;
  }
  if (needsSorting) {
    std::stable_sort(
        objects.begin(), objects.end(),
        [](const std::shared_ptr<Object>& a, const std::shared_ptr<Object>& b) { return a->start < b->start; });
    needsSorting = false;
  }
  if (needsControlRebuild) {
    rebuildControls();
    needsControlRebuild = false;
  }
}

std::size_t Layer::lowerBound(std::int32_t frame) const {
  const auto found = std::partition_point(
      objects.begin(), objects.end(), [frame](const std::shared_ptr<Object>& object) { return object->end < frame; });
  return static_cast<std::size_t>(found - objects.begin());
}

std::size_t Layer::upperBound(std::int32_t frame) const {
  const auto found = std::partition_point(
      objects.begin(), objects.end(), [frame](const std::shared_ptr<Object>& object) { return object->start <= frame; });
  return static_cast<std::size_t>(found - objects.begin());
}

void Layer::rebuildControls() {
  controls.clear();
  for (const std::shared_ptr<Object>& object : objects) {
    if (!object->control) continue;
    const std::int32_t range = object->controlRange();
    controls.push_back({object->start, object->end, range == 0 ? ControlRecord::kAllLayers : range});
  }
}

}  // namespace Edit
