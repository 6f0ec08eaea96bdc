#include "edit/LayerObjectManager.h"

#include <algorithm>
#include <string>

#include "edit/Object.h"
#include "system/Exception.h"

namespace Edit {

namespace {

const Layer& emptyLayer() {
  static const Layer layer(-1);
  return layer;
}

const std::shared_ptr<Object>& noObject() {
  static const std::shared_ptr<Object> none;
  return none;
}

}  // namespace

LayerObjectManager::LayerObjectManager() { layers_.push_back(std::make_unique<Layer>(0)); }

LayerObjectManager::~LayerObjectManager() = default;

void LayerObjectManager::update() {
  lastUsedLayer_ = 0;
  lastUsedFrame_ = 0;
  for (std::int32_t row = 0; row < layerCount(); ++row) {
    Layer& layer = *layers_[static_cast<std::size_t>(row)];
    layer.update(row);
    if (layer.objects.empty()) continue;
    lastUsedFrame_ = std::max(lastUsedFrame_, layer.objects.back()->end);
    lastUsedLayer_ = row;
  }
}

const Layer& LayerObjectManager::getLayer(std::int32_t index) const {
  if (index < 0 || index >= layerCount()) return emptyLayer();
  return *layers_[static_cast<std::size_t>(index)];
}

Layer& LayerObjectManager::addLayers(std::int32_t index) {
  if (index < 0) {
    throw System::NoteException("Edit::LayerObjectManager::addLayers", "invalid layer index.", std::to_string(index));
  }
  while (layerCount() <= index) layers_.push_back(std::make_unique<Layer>(layerCount()));
  return *layers_[static_cast<std::size_t>(index)];
}

const std::shared_ptr<Object>& LayerObjectManager::objectAt(std::int32_t layer, std::int32_t frame) const {
  return findLiving(layer, frame, frame);
}

const std::shared_ptr<Object>& LayerObjectManager::objectInRange(std::int32_t layer, std::int32_t first,
                                                                 std::int32_t last) const {
  return findLiving(layer, first, last);
}

const std::shared_ptr<Object>& LayerObjectManager::findLiving(std::int32_t layer, std::int32_t first,
                                                              std::int32_t last) const {
  const Layer& row = getLayer(layer);
  // A removed object keeps its frames until compaction, so the row is still in order
  // around it; the scan past it only ever looks at objects that meet the range.
  for (std::size_t i = row.lowerBound(first); i < row.objects.size(); ++i) {
    const std::shared_ptr<Object>& object = row.objects[i];
    if (object->start > last) break;
    if (object->layer == layer) return object;
  }
  return noObject();
}

std::shared_ptr<Object> LayerObjectManager::createEmptyObject(std::int32_t layer, std::int32_t start,
                                                              std::int32_t end) {
  Layer& row = addLayers(layer);
  auto object = std::make_shared<Object>();
  object->layer = layer;
  object->start = start;
  object->end = end;
  row.objects.push_back(object);
  row.needsSorting = true;
  row.needsControlRebuild = true;
  return object;
}

void LayerObjectManager::forEachControl(std::int32_t layer, std::int32_t startFrame, std::int32_t endFrame,
                                        const ControlCallback& callback) const {
  const std::int32_t rows = std::min(layer, layerCount());
  for (std::int32_t row = 0; row < rows; ++row) {
    for (const ControlRecord& record : layers_[static_cast<std::size_t>(row)]->controls) {
      if (record.start > endFrame || record.end < startFrame) continue;
      // In 64 bits: a row near the top of the integer range plus "all layers" must not wrap.
      const std::int64_t reach = std::int64_t{row} + record.range;
      if (reach >= layer) callback(record.start, record.end, reach == layer);
    }
  }
}

}  // namespace Edit
