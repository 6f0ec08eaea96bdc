// グループ制御(音声): sets volume and pan for a range of layers below it as one.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemLayerRange;

class GroupAudioControl final : public EffectInstance<GroupAudioControl> {
 public:
  static const EffectInfo kInfo;
  GroupAudioControl();

  std::int32_t getLayerRange() const override;

 private:
  const EffectItemLayerRange& layerRange_;
};

}  // namespace Effect
