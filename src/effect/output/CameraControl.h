// カメラ制御: one camera that looks at a range of layers below it as a 3D scene, with
// depth, transparency and the lights of its chain. It is offered on camera layers only.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemLayerRange;

class CameraControl final : public EffectInstance<CameraControl> {
 public:
  static const EffectInfo kInfo;
  CameraControl();

  std::int32_t getLayerRange() const override;

 private:
  const EffectItemLayerRange& layerRange_;
};

}  // namespace Effect
