// 並行光源(カメラ制御): a parallel light, with or without shadow, for the camera's scene.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class CameraLight final : public EffectInstance<CameraLight> {
 public:
  static const EffectInfo kInfo;
  CameraLight() : EffectInstance(kInfo) {}
};

}  // namespace Effect
