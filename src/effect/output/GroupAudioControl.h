// グループ制御(音声): sets volume and pan for a range of layers below it as one.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemLayerRange;
class EffectItemNumber;

class GroupAudioControl final : public EffectInstance<GroupAudioControl> {
 public:
  static const EffectInfo kInfo;
  GroupAudioControl();

  std::int32_t getLayerRange() const override;
  // Audio object thread: the gains of this frame, times those of the group around it.
  // The members' mixes read them later on the same thread.
  void controlAudio(Render::ObjectContext& context) override;
  float leftGain() const noexcept { return leftGain_; }
  float rightGain() const noexcept { return rightGain_; }

  // The layer of the sound group in force where this one stands, or -1: written by the
  // walk, followed outward by the chains of the objects it governs.
  std::int32_t parentLayer = -1;

 private:
  const EffectItemNumber& volume_;
  const EffectItemNumber& pan_;
  const EffectItemLayerRange& layerRange_;
  float leftGain_ = 1.0f;
  float rightGain_ = 1.0f;
};

}  // namespace Effect
