// ルミナンスキー: makes the dark, the bright or the middle tones of an image transparent.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class LuminanceKeyFilter final : public EffectInstance<LuminanceKeyFilter> {
 public:
  static const EffectInfo kInfo;
  LuminanceKeyFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
