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

 private:
  const EffectItemLayerRange& layerRange_;
};

}  // namespace Effect
