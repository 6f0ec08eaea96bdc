// The rows of a scene and what stands on them: the first part of Edit::Scene. Every
// change happens on the main thread inside an edit section and only marks rows;
// update() at the section's close brings them into order. Read operations may be called
// under a scene reader from any thread, and accept any row index.
#pragma once

#include <cstddef>
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

  // Binary searches on one row, positions in its list: the first object whose end is
  // not below `frame`, and the first whose start is above it. Any row index is allowed;
  // one outside the list searches the static empty row and gives 0.
  std::size_t lowerBound(std::int32_t layer, std::int32_t frame) const { return getLayer(layer).lowerBound(frame); }
  std::size_t upperBound(std::int32_t layer, std::int32_t frame) const { return getLayer(layer).upperBound(frame); }

  // The object that holds `frame`, or the first object that meets first..last, or an
  // empty pointer. Objects that have left the row but are not yet compacted away count
  // as absent.
  const std::shared_ptr<Object>& objectAt(std::int32_t layer, std::int32_t frame) const;
  const std::shared_ptr<Object>& objectInRange(std::int32_t layer, std::int32_t first, std::int32_t last) const;

  // The living neighbours of an object on its sorted row: the last one that ends before
  // it starts, and the first one that starts after it ends; empty when there is none.
  const std::shared_ptr<Object>& previousObject(const Object& object) const;
  const std::shared_ptr<Object>& nextObject(const Object& object) const;

  // A new object with no effects on the row, which is created if needed.
  std::shared_ptr<Object> createEmptyObject(std::int32_t layer, std::int32_t start, std::int32_t end);

  // Every object leaves the scene (layer -1) and the rows go; one empty row is left,
  // already brought into order.
  void clear();
  // Inserts an empty row at `index`: the rows from there down to the last used one move
  // one row down. The row takes `info` (an undo record's own) or a fresh one.
  void createLayer(std::int32_t index, std::shared_ptr<LayerInfo> info = nullptr);
  // Takes the row's objects out of the scene and moves the emptied row to the end, so
  // the rows below it move up; the row that then stands last gets a fresh info.
  void deleteLayer(std::int32_t index);
  // Walks row `from` to `to` by swaps with its neighbours; the rows between move one
  // step the other way, with their infos and objects. Negative indices do nothing.
  void moveLayer(std::int32_t from, std::int32_t to);
  // Puts the object on another row; the old row lets go of it at its compaction. A
  // removed object (layer -1) comes back this way too.
  void moveObject(const std::shared_ptr<Object>& object, std::int32_t layer);

  // Resizing. None of them lets the object reach its next neighbour, and none takes an
  // undo recorder: the commands register the object before they call them.
  //
  // Sets the length in frames of an object without section points (one with points is
  // left alone), at its right end or, with `fromLeft`, at its left end. Growing stops at
  // the neighbour on that side.
  void setObjectLength(Object& object, std::int32_t length, bool fromLeft);
  // Stretches the object to `length` frames from its start, moving the section points
  // in proportion. Every section keeps at least one frame, so the result may be longer
  // than asked for, and it is never shorter than two frames unless it already was one.
  void scaleObject(Object& object, std::int32_t length);
  // Sets section `section` (0..n) to `length` frames; what stands right of it moves
  // with the end of the object. A length below 1 counts as 1.
  void changeSectionLength(Object& object, std::int32_t section, std::int32_t length);

  // Calls back for each control object on a row above `layer` whose frames meet
  // startFrame..endFrame and whose range reaches down to `layer`, rows from 0 on.
  void forEachControl(std::int32_t layer, std::int32_t startFrame, std::int32_t endFrame,
                      const ControlCallback& callback) const;

 private:
  // The highest row that holds an object now, not waiting for update(); 0 when none does.
  std::int32_t liveLastUsedLayer() const;
  void swapLayers(std::int32_t a, std::int32_t b);
  // Marks the object's row after its frames changed.
  void markMoved(const Object& object);
  // The highest end the object may take on its row.
  std::int32_t endLimit(const Object& object) const;
  const std::shared_ptr<Object>& findLiving(std::int32_t layer, std::int32_t first, std::int32_t last) const;

  std::int32_t lastUsedLayer_ = 0;
  std::int32_t lastUsedFrame_ = 0;
  // The index in the list is the row.
  std::vector<std::unique_ptr<Layer>> layers_;
};

}  // namespace Edit
