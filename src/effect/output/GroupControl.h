// グループ制御: moves, turns and scales a range of layers below it as one.
#pragma once

#include <array>

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemLayerRange;
class EffectItemNumber;

class GroupControl final : public EffectInstance<GroupControl> {
 public:
  static const EffectInfo kInfo;
  GroupControl();

  std::int32_t getLayerRange() const override;
  // Stores the matrices that everything drawn under the group reads this frame.
  void controlVideo(Render::ObjectContext& context) override;
  void getOutputView(Render::ObjectContext& context, Render::ObjectView& view) override;
  const std::array<float, 16>* storedWorld() const override { return stored_ ? &world_ : nullptr; }
  const std::array<float, 16>* storedViewProjection() const override { return stored_ ? &viewProjection_ : nullptr; }
  // Whether the group only shifts what it holds (no zoom, depth or turn, and so are the
  // groups around it): the anchors of objects inside follow from it.
  bool plainShift() const noexcept { return plainShift_; }

  // The layer of the group in force where this one stands, or -1: the walk writes it on
  // reaching the control, and the chains of the objects it governs follow it outward.
  std::int32_t parentLayer = -1;

 private:
  EffectItemNumber& x_;
  EffectItemNumber& y_;
  EffectItemNumber& z_;
  EffectItemNumber& rotationX_;
  EffectItemNumber& rotationY_;
  EffectItemNumber& rotationZ_;
  EffectItemNumber& scale_;
  const EffectItemLayerRange& layerRange_;
  // Written by the control task, read by the tasks after it on the same thread.
  bool stored_ = false;
  bool plainShift_ = true;
  std::array<float, 16> world_{};
  std::array<float, 16> viewProjection_{};
};

}  // namespace Effect
