#include "edit/ObjectSections.h"

#include <algorithm>
#include <functional>

#include "edit/LayerObjectManager.h"
#include "edit/Object.h"
#include "edit/ObjectFactory.h"
#include "effect/EffectBase.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/ItemContext.h"
#include "system/Exception.h"

namespace Edit {

namespace {

using Effect::EffectItemNumber;

void forEachNumber(const Object& object, const std::function<void(EffectItemNumber&)>& visit) {
  for (const auto& effect : object.effects) {
    for (const auto& item : effect->items()) {
      if (auto* number = dynamic_cast<EffectItemNumber*>(item.get())) visit(*number);
    }
  }
}

// A key index beyond the item's values means its last one: an item whose movement
// keeps a fixed count of values has fewer keys than the object has points.
void setKey(EffectItemNumber& item, std::int32_t index, double value) {
  if (item.valueCount() == 0) {
    throw System::NoteException("Effect::EffectItemNumber::clampValueIndex", "item value index out of range.");
  }
  item.setValue(std::clamp(index, 0, item.valueCount() - 1), value);
}

}  // namespace

ObjectSections::KeyValues ObjectSections::keyValuesAt(const Object& object, std::int32_t frame) {
  KeyValues values;
  const Effect::ItemContext context = Effect::ItemContext::at(object, frame);
  forEachNumber(object, [&](EffectItemNumber& item) { values[&item] = item.getValueAt(context); });
  return values;
}

void ObjectSections::addSection(Object& object, std::int32_t frame, const KeyValues& values) {
  const auto last = static_cast<std::int32_t>(object.sections.size());
  std::int32_t index = object.sectionIndex(frame);
  while (index <= last && object.sectionLength(index) < 2) ++index;
  if (index > last) return;
  const std::int32_t begin = object.sectionBegin(index);
  const std::int32_t limit = begin + object.sectionLength(index);
  std::int32_t point = frame > begin ? frame : begin + 1;
  if (point >= limit) point = limit - 1;
  object.sections.insert(object.sections.begin() + index, point - object.start);

  // The item moves the key to index + 1 itself, the slot of the new point.
  EffectItemNumber::Overrides overrides;
  for (const auto& [item, value] : values) overrides[item] = {value, index};
  forEachNumber(object, [&](EffectItemNumber& item) { item.insertSectionPoint(index, &overrides); });
}

void ObjectSections::deleteSection(Object& object, std::int32_t index) {
  if (index < 1 || index > static_cast<std::int32_t>(object.sections.size())) return;
  object.sections.erase(object.sections.begin() + (index - 1));
  forEachNumber(object, [&](EffectItemNumber& item) { item.removeSectionPoint(index); });
}

bool ObjectSections::split(const Object& object, std::int32_t frame, Object& left, Object& right,
                           LayerObjectManager& scene, Effect::EffectService& effects) {
  if (!(object.start < frame && frame <= object.end)) return false;
  const ObjectFactory factory(effects);
  for (Object* part : {&left, &right}) {
    part->layer = object.layer;
    part->start = object.start;
    part->end = object.end;
    factory.copyContent(object, *part);
  }

  // Each part still equals the object here, so these are the values the object showed
  // on the two frames of the cut.
  const KeyValues leftValues = keyValuesAt(left, frame - 1);
  const KeyValues rightValues = keyValuesAt(right, frame);
  const auto pointCount = static_cast<std::int32_t>(object.sections.size());
  forEachNumber(left, [&](EffectItemNumber& item) { setKey(item, pointCount + 1, leftValues.at(&item)); });
  forEachNumber(right, [&](EffectItemNumber& item) { setKey(item, 0, rightValues.at(&item)); });

  // From the top down, so that a deletion does not renumber the points still to come.
  for (std::int32_t i = pointCount; i >= 1; --i) {
    const std::int32_t point = object.sectionBegin(i);
    // A point must stand below the left part's new end, frame - 1; a point at `frame`
    // would be the right part's start.
    if (point + 1 >= frame) deleteSection(left, i);
    if (point <= frame) deleteSection(right, i);
  }
  left.end = frame - 1;
  right.start = frame;
  for (std::int32_t& offset : right.sections) offset += object.start - frame;

  if (object.layer >= 0) {
    Layer& row = scene.addLayers(object.layer);
    row.needsSorting = true;
    if (object.control) row.needsControlRebuild = true;
  }
  return true;
}

}  // namespace Edit
