// 座標: moves the object by X, Y, Z.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicMove final : public EffectInstance<BasicMove> {
 public:
  static const EffectInfo kInfo;
  BasicMove() : EffectInstance(kInfo) {}
};

}  // namespace Effect
