// 境界ぼかし: fades an image towards its edges, or softens the edges of its opaque part.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BorderBlurFilter final : public EffectInstance<BorderBlurFilter> {
 public:
  static const EffectInfo kInfo;
  BorderBlurFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
