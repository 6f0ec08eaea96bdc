// オブジェクト分割: cuts the image into a grid of pieces that are drawn one by one.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ObjectDivide final : public EffectInstance<ObjectDivide> {
 public:
  static const EffectInfo kInfo;
  ObjectDivide() : EffectInstance(kInfo) {}
};

}  // namespace Effect
