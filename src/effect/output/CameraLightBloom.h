// ライトブルーム(カメラ制御): spreads the bright parts of the camera's finished picture.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class CameraLightBloom final : public EffectInstance<CameraLightBloom> {
 public:
  static const EffectInfo kInfo;
  CameraLightBloom() : EffectInstance(kInfo) {}
};

}  // namespace Effect
