// モデルファイル: a 3D model file drawn straight into the frame.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ModelLoad final : public EffectInstance<ModelLoad> {
 public:
  static const EffectInfo kInfo;
  ModelLoad() : EffectInstance(kInfo) {}
};

}  // namespace Effect
