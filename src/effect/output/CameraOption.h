// カメラ制御オプション: how an object under the camera faces it and whether its back shows.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class CameraOption final : public EffectInstance<CameraOption> {
 public:
  static const EffectInfo kInfo;
  CameraOption() : EffectInstance(kInfo) {}
};

}  // namespace Effect
