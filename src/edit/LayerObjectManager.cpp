#include "edit/LayerObjectManager.h"

#include <algorithm>
#include <cmath>
#include <limits>
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

void LayerObjectManager::clear() {
  for (const std::unique_ptr<Layer>& row : layers_) {
    for (const std::shared_ptr<Object>& object : row->objects) object->layer = -1;
  }
  layers_.clear();
  layers_.push_back(std::make_unique<Layer>(0));
  update();
}

std::int32_t LayerObjectManager::liveLastUsedLayer() const {
  for (std::int32_t row = layerCount() - 1; row > 0; --row) {
    const Layer& layer = *layers_[static_cast<std::size_t>(row)];
    for (const std::shared_ptr<Object>& object : layer.objects) {
      if (object->layer == row) return row;
    }
  }
  return 0;
}

void LayerObjectManager::createLayer(std::int32_t index, std::shared_ptr<LayerInfo> info) {
  if (index < 0) return;
  // Below the last used row every row is empty, so the one just past it (or `index`
  // itself when that lies further down) is an empty row that can be walked up.
  const std::int32_t empty = std::max(liveLastUsedLayer() + 1, index);
  addLayers(empty);
  moveLayer(empty, index);
  Layer& row = *layers_[static_cast<std::size_t>(index)];
  row.info = info ? std::move(info) : std::make_shared<LayerInfo>();
  row.info->index = index;
}

void LayerObjectManager::deleteLayer(std::int32_t index) {
  if (index < 0 || index >= layerCount()) return;
  Layer& row = *layers_[static_cast<std::size_t>(index)];
  for (const std::shared_ptr<Object>& object : row.objects) {
    if (object->layer == index) object->layer = -1;
  }
  row.objects.clear();
  row.needsCompaction = false;
  row.needsSorting = false;
  row.needsControlRebuild = true;
  const std::int32_t last = layerCount() - 1;
  moveLayer(index, last);
  // The deleted row's info stays with whoever keeps it (an undo record); the empty row
  // at the end starts over.
  Layer& end = *layers_[static_cast<std::size_t>(last)];
  end.info = std::make_shared<LayerInfo>();
  end.info->index = last;
}

void LayerObjectManager::moveLayer(std::int32_t from, std::int32_t to) {
  if (from < 0 || to < 0 || from == to) return;
  addLayers(std::max(from, to));
  const std::int32_t step = from < to ? 1 : -1;
  for (std::int32_t row = from; row != to; row += step) swapLayers(row, row + step);
}

void LayerObjectManager::swapLayers(std::int32_t a, std::int32_t b) {
  Layer& first = *layers_[static_cast<std::size_t>(a)];
  Layer& second = *layers_[static_cast<std::size_t>(b)];
  // Only the objects that live on a row follow it. A list may still hold an object
  // that moved from one of the two rows to the other, so both sets are taken before
  // either is rewritten.
  std::vector<Object*> livingA;
  std::vector<Object*> livingB;
  for (const std::shared_ptr<Object>& object : first.objects) {
    if (object->layer == a) livingA.push_back(object.get());
  }
  for (const std::shared_ptr<Object>& object : second.objects) {
    if (object->layer == b) livingB.push_back(object.get());
  }
  for (Object* object : livingA) object->layer = b;
  for (Object* object : livingB) object->layer = a;
  std::swap(layers_[static_cast<std::size_t>(a)], layers_[static_cast<std::size_t>(b)]);
  layers_[static_cast<std::size_t>(a)]->info->index = a;
  layers_[static_cast<std::size_t>(b)]->info->index = b;
}

void LayerObjectManager::moveObject(const std::shared_ptr<Object>& object, std::int32_t layer) {
  Layer& target = addLayers(layer);
  const std::int32_t old = object->layer;
  const auto listed = [&] {
    return std::find(target.objects.begin(), target.objects.end(), object) != target.objects.end();
  };
  // An object that already names the row only needs placing when no list holds it yet
  // (one made outside the scene, such as a copy).
  if (old == layer && listed()) return;
  if (old >= 0 && old != layer && old < layerCount()) {
    Layer& source = *layers_[static_cast<std::size_t>(old)];
    source.needsCompaction = true;
    if (object->control) source.needsControlRebuild = true;
  }
  object->layer = layer;
  target.needsSorting = true;
  if (object->control) target.needsControlRebuild = true;
  // A removed object that comes back before its old row was compacted is still in that
  // list; appending it again would put it there twice.
  if (old < 0 && listed()) return;
  target.objects.push_back(object);
}

const std::shared_ptr<Object>& LayerObjectManager::previousObject(const Object& object) const {
  const Layer& row = getLayer(object.layer);
  // Everything before lowerBound(start) ends before the object starts.
  for (std::size_t i = row.lowerBound(object.start); i > 0; --i) {
    const std::shared_ptr<Object>& candidate = row.objects[i - 1];
    if (candidate->layer == object.layer && candidate.get() != &object) return candidate;
  }
  return noObject();
}

const std::shared_ptr<Object>& LayerObjectManager::nextObject(const Object& object) const {
  const Layer& row = getLayer(object.layer);
  for (std::size_t i = row.upperBound(object.end); i < row.objects.size(); ++i) {
    const std::shared_ptr<Object>& candidate = row.objects[i];
    if (candidate->layer == object.layer && candidate.get() != &object) return candidate;
  }
  return noObject();
}

void LayerObjectManager::markMoved(const Object& object) {
  if (object.layer < 0 || object.layer >= layerCount()) return;
  Layer& row = *layers_[static_cast<std::size_t>(object.layer)];
  row.needsSorting = true;
  if (object.control) row.needsControlRebuild = true;
}

std::int32_t LayerObjectManager::endLimit(const Object& object) const {
  const std::shared_ptr<Object>& next = nextObject(object);
  // The frame after an end must still be a number, as the project file demands.
  return next ? next->start - 1 : std::numeric_limits<std::int32_t>::max() - 1;
}

void LayerObjectManager::setObjectLength(Object& object, std::int32_t length, bool fromLeft) {
  if (!object.sections.empty()) return;
  const std::int64_t span = std::max(std::int64_t{length} - 1, std::int64_t{0});
  const std::int64_t old = std::int64_t{object.end} - object.start;
  if (span == old) return;
  if (fromLeft) {
    std::int64_t start = std::int64_t{object.end} - span;
    if (span > old) {
      const std::shared_ptr<Object>& previous = previousObject(object);
      // Frame 0 stands in for a missing neighbour, since no object starts before it.
      start = std::max<std::int64_t>(start, previous ? previous->end + 1 : 0);
    }
    object.start = static_cast<std::int32_t>(start);
  } else {
    std::int64_t end = std::int64_t{object.start} + span;
    if (span > old) end = std::min<std::int64_t>(end, endLimit(object));
    object.end = static_cast<std::int32_t>(end);
  }
  markMoved(object);
}

void LayerObjectManager::scaleObject(Object& object, std::int32_t length) {
  const std::int64_t newEnd = std::min<std::int64_t>(std::int64_t{object.start} + length - 1, endLimit(object));
  if (newEnd == object.end) return;
  const double ratio = static_cast<double>(newEnd - object.start) / std::max(object.end - object.start, 1);
  std::int32_t previous = 0;
  for (std::int32_t& offset : object.sections) {
    offset = std::max(previous + 1, static_cast<std::int32_t>(std::trunc(offset * ratio)));
    previous = offset;
  }
  // `previous` is now the last offset, or 0 without points.
  object.end = static_cast<std::int32_t>(std::max<std::int64_t>(std::int64_t{object.start} + 1 + previous, newEnd));
  markMoved(object);
}

void LayerObjectManager::changeSectionLength(Object& object, std::int32_t section, std::int32_t length) {
  const auto last = static_cast<std::int32_t>(object.sections.size());
  if (section < 0 || section > last) return;
  const std::int64_t begin = object.sectionBegin(section);
  // The last section counts to `end`, as sectionLength does.
  const std::int64_t after = section == last ? object.end : object.sectionBegin(section + 1);
  const std::int64_t wanted = std::int64_t{object.end} - after + begin + std::max(length, 1);
  const auto delta = static_cast<std::int32_t>(std::min<std::int64_t>(wanted, endLimit(object)) - object.end);
  for (std::size_t i = static_cast<std::size_t>(section); i < object.sections.size(); ++i) object.sections[i] += delta;
  object.end += delta;
  markMoved(object);
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
