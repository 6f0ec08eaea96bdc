// 拡大率: scales the object, as a whole and per axis; all in percent.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicScale final : public EffectInstance<BasicScale> {
 public:
  static const EffectInfo kInfo;
  BasicScale() : EffectInstance(kInfo) {}
};

}  // namespace Effect
