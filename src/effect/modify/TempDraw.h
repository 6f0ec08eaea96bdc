// オフスクリーン描画: draws the object as it will stand in the frame, so that the filters behind it work on that
// picture.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class TempDraw final : public EffectInstance<TempDraw> {
 public:
  static const EffectInfo kInfo;
  TempDraw() : EffectInstance(kInfo) {}
};

}  // namespace Effect
