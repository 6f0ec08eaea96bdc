#include "edit/ObjectPaste.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

#include "edit/Clipboard.h"
#include "edit/Group.h"
#include "edit/Object.h"
#include "edit/ObjectFactory.h"
#include "edit/Scene.h"
#include "edit/SelectionExtent.h"
#include "edit/UndoRecorder.h"

namespace Edit {

namespace {

std::int32_t toFrame(std::int64_t frame) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(frame, std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

const Object* ObjectPaste::findCollision(const SelectionExtent& extent, std::int64_t df, std::int32_t dl,
                                         std::int64_t& spanFirst) const {
  for (const SelectionExtent::Row& span : extent.rows) {
    const std::int32_t layer = span.layer + dl;
    const std::int64_t first = span.first + df;
    const std::int64_t last = span.last + df;
    const Layer& row = scene_.getLayer(layer);
    // Walking back from the last object that starts within the span, the first living
    // one either reaches into the span or proves that nothing before it does.
    for (std::size_t i = row.upperBound(toFrame(last)); i > 0; --i) {
      const Object& object = *row.objects[i - 1];
      if (object.layer != layer) continue;
      if (object.end < first) break;
      spanFirst = first;
      return &object;
    }
  }
  return nullptr;
}

std::vector<std::shared_ptr<Object>> ObjectPaste::pasteAt(const std::vector<std::shared_ptr<Object>>& copies,
                                                          std::int32_t layer, std::int32_t frame, bool focus) {
  const SelectionExtent extent = SelectionExtent::of(copies);
  const std::int32_t dl = layer - extent.lowestLayer;
  std::int64_t df = std::int64_t{frame} - extent.firstFrame;
  std::int64_t spanFirst = 0;
  // Each collision moves the whole paste just past the object it met, and every row is
  // tested again, since the move may run into something on a row already passed.
  while (const Object* obstacle = findCollision(extent, df, dl, spanFirst)) df += obstacle->end + 1 - spanFirst;
  return placeAt(copies, dl, toFrame(df), focus);
}

bool ObjectPaste::isFree(const SelectionExtent& extent, std::int32_t df, std::int32_t& dl) const {
  std::int64_t spanFirst = 0;
  if (!findCollision(extent, df, dl, spanFirst)) return true;
  ++dl;
  return false;
}

std::vector<std::shared_ptr<Object>> ObjectPaste::placeAt(const std::vector<std::shared_ptr<Object>>& copies,
                                                          std::int32_t dl, std::int32_t df, bool focus) {
  const ObjectFactory factory(effects_);
  // One new group for each group of the copies, so that the pasted objects belong
  // together as their originals did, but not to the originals' groups.
  std::unordered_map<const Group*, std::shared_ptr<Group>> groups;
  std::vector<std::shared_ptr<Object>> placed;
  placed.reserve(copies.size());
  for (const std::shared_ptr<Object>& copy : copies) {
    std::shared_ptr<Object> object = scene_.createEmptyObject(copy->layer + dl, toFrame(std::int64_t{copy->start} + df),
                                                              toFrame(std::int64_t{copy->end} + df));
    factory.copyContent(*copy, *object);
    if (recorder_) recorder_->addObjectCreate(object);
    if (copy->group) {
      std::shared_ptr<Group>& group = groups[copy->group.get()];
      if (!group) group = std::make_shared<Group>();
      if (recorder_) recorder_->addObjectGroup(object);
      Group::join(group, *object);
    }
    placed.push_back(std::move(object));
  }
  if (focus && !placed.empty()) scene_.focusObject = placed.front();
  return placed;
}

std::vector<std::shared_ptr<Object>> ObjectPaste::placeBelow(const std::vector<std::shared_ptr<Object>>& copies,
                                                             const SelectionExtent& extent, std::int32_t df,
                                                             bool focus) {
  // isFree moves dl one row further down on each collision.
  std::int32_t dl = extent.highestLayer - extent.lowestLayer;
  bool free = false;
  while (!free) free = isFree(extent, df, dl);
  return placeAt(copies, dl, df, focus);
}

std::vector<std::shared_ptr<Object>> ObjectPaste::pasteObject(const Clipboard& clipboard,
                                                              const std::optional<Position>& mouse, bool focus) {
  if (clipboard.empty()) return {};
  if (mouse) return pasteAt(clipboard.objects(), std::max(mouse->layer, 0), std::max(mouse->frame, 0), focus);
  const SelectionExtent& extent = clipboard.extent();
  const std::int32_t cursor = scene_.cursorFrame;
  const bool outside = cursor < extent.firstFrame || cursor > extent.lastFrame;
  return placeBelow(clipboard.objects(), extent, outside ? cursor - extent.firstFrame : 0, focus);
}

std::vector<std::shared_ptr<Object>> ObjectPaste::duplicateObject(const std::vector<std::shared_ptr<Object>>& targets,
                                                                  bool focus) {
  if (targets.empty()) return {};
  const std::vector<std::shared_ptr<Object>> copies = ObjectFactory(effects_).copyObjects(targets);
  return placeBelow(copies, SelectionExtent::of(copies), 0, focus);
}

}  // namespace Edit
