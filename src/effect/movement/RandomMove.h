// "ランダム移動": a smooth random walk between the first two values, with a new random
// point every `period` frames. The numbers are a pure function of the item, the object
// and the frame, so the same frame renders the same on every run.
#pragma once

#include <cstdint>

#include "effect/movement/MovementBase.h"

namespace Effect {

class RandomMove : public MovementBase {
 public:
  using MovementBase::MovementBase;
  double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const override;
  bool showsPath(const EffectItemNumber& item) const override;

  // The seed of one item in one object: the hash of the item's name mixed with its scale
  // and range, then the sub-object, the object's start and the render's seed.
  static std::int64_t seed(const EffectItemNumber& item, const ItemContext& context);
  // A float in 0 to 1 for point `n` of a seed.
  static float random(std::int64_t seed, std::int64_t n);
};

}  // namespace Effect
