#include "effect/movement/LinkedPoint.h"

#include <cmath>

#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemNumberGroup.h"

namespace Effect {

LinkedPoint::LinkedPoint(const EffectItemNumber& item) {
  const EffectItemNumberGroup* group = item.group();
  if (!group || !group->linked() || group->members().size() < 2) {
    items_ = {&item, &item, &item};
    return;
  }
  const auto& members = group->members();
  for (std::size_t k = 0; k < members.size() && k < items_.size(); ++k) {
    const EffectItemNumber* member = members[k];
    if (member == &item) self_ = k;
    const bool standsIn = member == &item || (member->movementPointer() == item.movementPointer() &&
                                              member->flags() == item.flags());
    items_[k] = standsIn ? member : &item;
  }
}

LinkedPoint::Point LinkedPoint::at(std::int32_t index) const {
  Point point{};
  for (std::size_t k = 0; k < items_.size(); ++k) point[k] = items_[k] ? items_[k]->getValue(index) : 0.0;
  return point;
}

double LinkedPoint::distance(const Point& a, const Point& b) {
  return std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
}

}  // namespace Effect
