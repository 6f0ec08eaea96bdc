#include "edit/ObjectFactory.h"

#include <algorithm>

#include "edit/EffectManager.h"
#include "edit/LayerObjectManager.h"
#include "edit/Object.h"
#include "effect/EffectDefine.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"

namespace Edit {

std::shared_ptr<Object> ObjectFactory::createObject(LayerObjectManager& rows, Effect::EffectDefine& define,
                                                    std::int32_t layer, std::int32_t start, std::int32_t end) const {
  Layer& row = rows.addLayers(layer);
  row.needsSorting = true;
  auto object = std::make_shared<Object>();
  object->layer = layer;
  object->start = start;
  object->end = end;
  row.objects.push_back(object);
  try {
    EffectManager chain(*object, effects_);
    const std::size_t slot = chain.setEffectByDefine(define);
    // The define's own effect takes the stored defaults; that is the first effect,
    // except for an output effect chosen as an object, behind its paired input.
    object->effects.at(slot)->setItemData(define.prototype());
    const auto pointCount = static_cast<std::int32_t>(object->sections.size()) + 2;
    for (const auto& effect : object->effects) {
      for (const auto& item : effect->items()) {
        if (auto* number = dynamic_cast<Effect::EffectItemNumber*>(item.get())) number->resizeValues(pointCount);
      }
    }
  } catch (...) {
    // Nothing else has seen the object yet, so it can leave the list at once.
    row.objects.erase(std::find(row.objects.begin(), row.objects.end(), object));
    object->layer = -1;
    throw;
  }
  if (object->control) row.needsControlRebuild = true;
  return object;
}

void ObjectFactory::copyContent(const Object& source, Object& target) const {
  target.clipping = source.clipping;
  target.camera = source.camera;
  target.sections = source.sections;
  EffectManager(target, effects_).copyChainFrom(source);
}

std::shared_ptr<Object> ObjectFactory::copyObject(const Object& source) const {
  auto copy = std::make_shared<Object>();
  copy->layer = source.layer;
  copy->start = source.start;
  copy->end = source.end;
  copyContent(source, *copy);
  // Only the pointer: a clipboard copy must not count as a member of the group.
  copy->group = source.group;
  return copy;
}

std::vector<std::shared_ptr<Object>> ObjectFactory::copyObjects(
    const std::vector<std::shared_ptr<Object>>& sources) const {
  std::vector<std::shared_ptr<Object>> copies;
  copies.reserve(sources.size());
  for (const std::shared_ptr<Object>& source : sources) copies.push_back(copyObject(*source));
  return copies;
}

}  // namespace Edit
