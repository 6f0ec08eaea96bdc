// The rows of a scene and what stands on them: the first part of Edit::Scene. Every
// change happens on the main thread inside an edit section and only marks rows;
// update() at the section's close brings them into order. Read operations may be called
// under a scene reader from any thread, and accept any row index.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "edit/Layer.h"

namespace Edit {

class Object;

class LayerObjectManager {
 public:
  // Called with a governing control object's start and end frame, and whether the
  // asked layer is the last row that the control object reaches.
  using ControlCallback = std::function<void(std::int32_t start, std::int32_t end, bool last)>;

  LayerObjectManager();
  virtual ~LayerObjectManager();
  LayerObjectManager(const LayerObjectManager&) = delete;
  LayerObjectManager& operator=(const LayerObjectManager&) = delete;

  // Brings every marked row into order, then recomputes the last used layer and frame.
  void update();

  // A row outside the list reads as a static empty row; the list does not grow.
  const Layer& getLayer(std::int32_t index) const;
  // Grows the list until `index` exists and returns that row, for writing.
  Layer& addLayers(std::int32_t index);
  std::int32_t layerCount() const noexcept { return static_cast<std::int32_t>(layers_.size()); }

  // Highest row with an object and highest end frame; right after update(), lagging
  // behind between an edit and the next update().
  std::int32_t lastUsedLayer() const noexcept { return lastUsedLayer_; }
  std::int32_t lastUsedFrame() const noexcept { return lastUsedFrame_; }

  // The object that holds `frame`, or the first object that meets first..last, or an
  // empty pointer. Objects that have left the row but are not yet compacted away count
  // as absent.
  const std::shared_ptr<Object>& objectAt(std::int32_t layer, std::int32_t frame) const;
  const std::shared_ptr<Object>& objectInRange(std::int32_t layer, std::int32_t first, std::int32_t last) const;

  // A new object with no effects on the row, which is created if needed.
  std::shared_ptr<Object> createEmptyObject(std::int32_t layer, std::int32_t start, std::int32_t end);

  // Calls back for each control object on a row above `layer` whose frames meet
  // startFrame..endFrame and whose range reaches down to `layer`, rows from 0 on.
  void forEachControl(std::int32_t layer, std::int32_t startFrame, std::int32_t endFrame,
                      const ControlCallback& callback) const;

 private:
  const std::shared_ptr<Object>& findLiving(std::int32_t layer, std::int32_t first, std::int32_t last) const;

  std::int32_t lastUsedLayer_ = 0;
  std::int32_t lastUsedFrame_ = 0;
  // The index in the list is the row.
  std::vector<std::unique_ptr<Layer>> layers_;
};

}  // namespace Edit
