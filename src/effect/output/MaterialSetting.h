// 材質設定(カメラ制御): how glossy an object looks under the camera's lights.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class MaterialSetting final : public EffectInstance<MaterialSetting> {
 public:
  static const EffectInfo kInfo;
  MaterialSetting() : EffectInstance(kInfo) {}
};

}  // namespace Effect
