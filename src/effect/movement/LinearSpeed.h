// "直線移動(時間制御)": along the straight path through all values at even speed over the
// whole object, the time bent by the item's time-control curve.
#pragma once

#include "effect/movement/MovementBase.h"

namespace Effect {

class LinearSpeed : public MovementBase {
 public:
  using MovementBase::MovementBase;
  double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const override;
  std::int32_t getSection(const EffectItemNumber& item, const TimeInfo& time) const override;
  std::vector<double> getSectionPositions(const EffectItemNumber& item, const Edit::Object& object) const override;

 private:
  std::vector<double> segmentLengths(const EffectItemNumber& item) const;
};

// The segment that a distance `t * sum(lengths)` along the path falls into and the
// fraction of it; the speed movements share it.
struct PathPosition {
  std::int32_t segment = 0;
  double fraction = 0.0;

  static PathPosition locate(const std::vector<double>& lengths, double t);
  // The running share of the path at each inner point; empty for fewer than 3 values
  // or a path of no length.
  static std::vector<double> pointShares(const std::vector<double>& lengths);
};

}  // namespace Effect
