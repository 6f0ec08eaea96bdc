// "補間移動(時間制御)": the spline through the values at even speed over the whole
// object, the time bent by the item's time-control curve.
#pragma once

#include "effect/movement/MovementBase.h"

namespace Effect {

class InterpolationSpeed : public MovementBase {
 public:
  using MovementBase::MovementBase;
  double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const override;
  std::int32_t getSection(const EffectItemNumber& item, const TimeInfo& time) const override;
  std::vector<double> getSectionPositions(const EffectItemNumber& item, const Edit::Object& object) const override;
};

}  // namespace Effect
