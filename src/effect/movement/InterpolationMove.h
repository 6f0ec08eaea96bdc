// "補間移動": a spline through the values, its tangents weighted by the distances to the
// neighbouring points, its time warped by the lengths of the neighbouring sections.
#pragma once

#include "effect/movement/MovementBase.h"

namespace Effect {

class InterpolationMove : public MovementBase {
 public:
  using MovementBase::MovementBase;
  double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const override;
};

}  // namespace Effect
