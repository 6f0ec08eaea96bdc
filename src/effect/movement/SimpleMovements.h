// The movements whose value needs no distances: a constant, a play range, a jump at
// each section point, and a constant speed.
#pragma once

#include "effect/movement/MovementBase.h"

namespace Effect {

// "移動無し": the first value.
class NoMove : public MovementBase {
 public:
  using MovementBase::MovementBase;
  double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const override;
};

// "再生範囲": a play position's two values, which the input effect reads itself; as a
// value it gives the first.
class MovieRange : public NoMove {
 public:
  using NoMove::NoMove;
};

// "瞬間移動": the value of the section; the value at the end is never reached.
class TeleportationMove : public MovementBase {
 public:
  using MovementBase::MovementBase;
  double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const override;
  bool isValueEditable(const EffectItemNumber& item, std::int32_t index) const override;
};

// "移動量指定": the first value plus the second, in units per frame, times the frames.
class SpeedMove : public MovementBase {
 public:
  using MovementBase::MovementBase;
  double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const override;
  bool isValueEditable(const EffectItemNumber& item, std::int32_t index) const override;
};

}  // namespace Effect
