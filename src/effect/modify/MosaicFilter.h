// モザイク: replaces square cells of the image by their mean colour.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class MosaicFilter final : public EffectInstance<MosaicFilter> {
 public:
  static const EffectInfo kInfo;
  MosaicFilter() : EffectInstance(kInfo) {}
};

}  // namespace Effect
