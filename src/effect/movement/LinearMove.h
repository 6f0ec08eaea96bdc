// "直線移動": straight from the value of a section's start to the value of its end, with
// an optional easing at the start of the first and the end of the last section.
#pragma once

#include "effect/movement/MovementBase.h"

namespace Effect {

class LinearMove : public MovementBase {
 public:
  using MovementBase::MovementBase;
  double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const override;

  // From a to b at fraction p: straight, or with an easing a cubic Bezier that is at
  // rest on the eased side.
  static double ease(double a, double b, double p, bool accelerate, bool decelerate);
};

}  // namespace Effect
