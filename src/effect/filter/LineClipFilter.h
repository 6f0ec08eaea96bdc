// 斜めクリッピング: keeps one side of a line, or a band, at any angle.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class LineClipFilter final : public EffectInstance<LineClipFilter> {
 public:
  static const EffectInfo kInfo;
  LineClipFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
