// One row of a scene: its objects in frame order, the row's own settings, and the
// cached list of layer-range control objects. Owned by the scene's layer-object
// manager; written on the main thread inside an edit section, read under a scene reader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Edit {

class Object;

// The part of a row that an undo record can keep.
struct LayerInfo {
  bool hide = false;
  std::wstring name;
  bool lock = false;
  std::int32_t index = 0;  // the row this info belongs to
};

// One control object of the row as the control walk needs it.
struct ControlRecord {
  std::int32_t start = 0;
  std::int32_t end = 0;
  // Layers below the object that it governs; the "all layers" of the effect is stored
  // as kAllLayers, so the walk needs no special case.
  std::int32_t range = 0;

  static constexpr std::int32_t kAllLayers = 1000000;
};

class Layer {
 public:
  explicit Layer(std::int32_t index);
  Layer(const Layer&) = delete;
  Layer& operator=(const Layer&) = delete;

  // Brings the row into order as the flags ask: compaction, then sorting, then the
  // control list. `row` is the index this layer stands at: an object whose `layer` is
  // not that row (-1 for a removed one, another row for one moved away) is dropped.
  void update(std::int32_t row);

  // The position of the first object whose end is not below the frame, by binary
  // search; meaningful once the row is sorted.
  std::size_t lowerBound(std::int32_t frame) const;
  // The position of the first object whose start is above the frame.
  std::size_t upperBound(std::int32_t frame) const;

  // Sorted by start frame, no two sharing a frame, once update() has run.
  std::vector<std::shared_ptr<Object>> objects;
  bool needsSorting = false;
  bool needsCompaction = false;
  bool needsControlRebuild = false;
  // Never null.
  std::shared_ptr<LayerInfo> info;
  // One record for each control object of the row, in object order.
  std::vector<ControlRecord> controls;

 private:
  void rebuildControls();
};

}  // namespace Edit
