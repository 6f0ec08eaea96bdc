// グループ制御: moves, turns and scales a range of layers below it as one.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemLayerRange;

class GroupControl final : public EffectInstance<GroupControl> {
 public:
  static const EffectInfo kInfo;
  GroupControl();

  std::int32_t getLayerRange() const override;

  // The layer of the group in force where this one stands, or -1: the walk writes it on
  // reaching the control, and the chains of the objects it governs follow it outward.
  std::int32_t parentLayer = -1;

 private:
  const EffectItemLayerRange& layerRange_;
};

}  // namespace Effect
