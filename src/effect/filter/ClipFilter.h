// クリッピング: cuts the four edges off an image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ClipFilter final : public EffectInstance<ClipFilter> {
 public:
  static const EffectInfo kInfo;
  ClipFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
