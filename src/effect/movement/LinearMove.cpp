#include "effect/movement/LinearMove.h"

#include "effect/item/EffectItemNumber.h"

namespace Effect {

double LinearMove::ease(double a, double b, double p, bool accelerate, bool decelerate) {
  if (!accelerate && !decelerate) return a + (b - a) * p;
  // Acceleration starts at rest, as it does in the spline movement: the first control
  // point sits on the start. The side without easing leaves at one and a half times
  // the average speed.
  const double q = 1.0 - p;
  const double c1 = accelerate ? a : (a + b) / 2.0;
  const double c2 = decelerate ? b : (a + b) / 2.0;
  return (3.0 * c1 * p + q * a) * q * q + (3.0 * c2 * q + b * p) * p * p;
}

double LinearMove::getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& /*context*/) const {
  const double a = item.getValue(time.section);
  const double b = item.getValue(time.section + 1);
  const bool accelerate = time.section == 0 && item.hasFlag(EffectItemNumber::Acceleration);
  const bool decelerate = time.section == time.sectionCount - 1 && item.hasFlag(EffectItemNumber::Deceleration);
  // The division comes last, so that whole frames land on exact values.
  if (!accelerate && !decelerate) return a + (b - a) * time.offset / time.length;
  return ease(a, b, time.offset / time.length, accelerate, decelerate);
}

}  // namespace Effect
