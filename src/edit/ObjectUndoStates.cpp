#include "edit/ObjectUndoStates.h"

#include <algorithm>

#include "edit/EditSection.h"
#include "edit/Group.h"
#include "edit/Layer.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "edit/SceneSelection.h"
#include "effect/EffectBase.h"
#include "effect/item/EffectItemInteger.h"

namespace Edit {

namespace {

using Request = EditSection::Request;

// Puts the object on `layer` (-1: out of the scene). Staying on its row only marks the
// row, since the frames may have changed its order there.
void placeOnRow(Scene& scene, const std::shared_ptr<Object>& object, std::int32_t layer) {
  if (layer < 0) {
    SceneSelection::takeOut(scene, *object);
  } else if (layer == object->layer) {
    Layer& row = scene.addLayers(layer);
    row.needsSorting = true;
    if (object->control) row.needsControlRebuild = true;
  } else {
    scene.moveObject(object, layer);
  }
}

Effect::EffectItemLayerRange* layerRangeOf(const Object& object) {
  if (object.effects.empty()) return nullptr;
  for (const auto& item : object.effects.front()->items()) {
    if (auto* range = dynamic_cast<Effect::EffectItemLayerRange*>(item.get())) return range;
  }
  return nullptr;
}

}  // namespace

void ObjectUndoUpdate::store(const Object& object) {
  layer = object.layer;
  start = object.start;
  end = object.end;
  sections = object.sections;
}

void ObjectUndoUpdate::restore(const std::shared_ptr<Object>& object, EditSection& section) const {
  object->start = start;
  object->end = end;
  placeOnRow(*section.scene(), object, layer);
  if (!sections.empty()) object->sections = sections;
  section.request(Request::Update);
  section.request(Request::Reset);
  section.request(Request::Time);
}

bool ObjectUndoUpdate::equal(const ObjectUndoUpdate& other) const {
  return layer == other.layer && start == other.start && end == other.end && sections == other.sections;
}

bool ObjectUndoUpdate::commit(ObjectUndoUpdate& before, ObjectUndoUpdate& after) {
  if (!before.sections.empty() && before.sections.size() == after.sections.size() &&
      before.sections != after.sections) {
    return true;
  }
  before.sections = {};
  after.sections = {};
  return before.layer != after.layer || before.start != after.start || before.end != after.end;
}

void ObjectUndoCreateDelete::store(const Object& object) { layer = object.layer; }

void ObjectUndoCreateDelete::restore(const std::shared_ptr<Object>& object, EditSection& section) const {
  placeOnRow(*section.scene(), object, layer);
  section.request(Request::Update);
}

void ObjectUndoSection::store(const Object& object) { sections = object.sections; }

void ObjectUndoSection::restore(const std::shared_ptr<Object>& object, EditSection& section) const {
  object->sections = sections;
  section.request(Request::Reset);
  section.request(Request::Time);
}

void ObjectUndoGroup::store(const Object& object) { group = object.group; }

void ObjectUndoGroup::restore(const std::shared_ptr<Object>& object, EditSection& /*section*/) const {
  Group::leave(*object);
  if (group) Group::join(group, *object);
}

void ObjectUndoEffect::store(const Object& object) { effects = object.effects; }

void ObjectUndoEffect::restore(const std::shared_ptr<Object>& object, EditSection& section) const {
  object->effects = effects;
  section.request(Request::Rebuild);
}

void ObjectUndoFlag::store(const Object& object) {
  clipping = object.clipping;
  camera = object.camera;
}

void ObjectUndoFlag::restore(const std::shared_ptr<Object>& object, EditSection& section) const {
  object->clipping = clipping;
  object->camera = camera;
  section.request(Request::Rebuild);
}

void ObjectUndoLayerRange::store(const Object& object) {
  const Effect::EffectItemLayerRange* item = layerRangeOf(object);
  range = item ? item->value() : -1;
}

void ObjectUndoLayerRange::restore(const std::shared_ptr<Object>& object, EditSection& section) const {
  Effect::EffectItemLayerRange* item = layerRangeOf(*object);
  if (!item || range < 0) return;
  item->setValue(range);
  Scene& scene = *section.scene();
  if (object->layer >= 0 && object->layer < scene.layerCount()) {
    scene.addLayers(object->layer).needsControlRebuild = true;
  }
  section.request(Request::Update);
  section.request(Request::Rebuild);
}

}  // namespace Edit
