// エッジ抽出: replaces an image by the lines of its edges, found in luma, in alpha or in
// all of Y, U and V. The luma and alpha checks exclude each other.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EdgeFilter final : public EffectInstance<EdgeFilter> {
 public:
  static const EffectInfo kInfo;
  EdgeFilter() : EffectInstance(kInfo) {}

  // When a check is switched on while the other is on too, switches the other off.
  bool itemEvent(ItemEvent& event) override;
};

}  // namespace Effect
