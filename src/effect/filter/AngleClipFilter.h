// 扇クリッピング: removes a fan around a centre point.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class AngleClipFilter final : public EffectInstance<AngleClipFilter> {
 public:
  static const EffectInfo kInfo;
  AngleClipFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
