// 環境光(カメラ制御): light from all sides for the camera's scene.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class CameraLightAmbient final : public EffectInstance<CameraLightAmbient> {
 public:
  static const EffectInfo kInfo;
  CameraLightAmbient() : EffectInstance(kInfo) {}
};

}  // namespace Effect
