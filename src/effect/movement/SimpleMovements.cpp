#include "effect/movement/SimpleMovements.h"

#include "effect/item/EffectItemNumber.h"

namespace Effect {

double NoMove::getValue(const EffectItemNumber& item, const TimeInfo& /*time*/, const ItemContext& /*context*/) const {
  return item.getValue(0);
}

double TeleportationMove::getValue(const EffectItemNumber& item, const TimeInfo& time,
                                   const ItemContext& /*context*/) const {
  return item.getValue(time.section);
}

bool TeleportationMove::isValueEditable(const EffectItemNumber& item, std::int32_t index) const {
  return index != item.valueCount() - 1;
}

double SpeedMove::getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& /*context*/) const {
  return item.getValue(0) + item.getValue(1) * time.offset;
}

bool SpeedMove::isValueEditable(const EffectItemNumber& /*item*/, std::int32_t index) const { return index == 0; }

}  // namespace Effect
