// 透明度: makes the object more transparent, in percent.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicAlpha final : public EffectInstance<BasicAlpha> {
 public:
  static const EffectInfo kInfo;
  BasicAlpha() : EffectInstance(kInfo) {}
};

}  // namespace Effect
