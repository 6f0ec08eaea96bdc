// 画像ループ: repeats the image in a grid, as one picture or as separate pieces.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ImageLoop final : public EffectInstance<ImageLoop> {
 public:
  static const EffectInfo kInfo;
  ImageLoop() : EffectInstance(kInfo) {}
};

}  // namespace Effect
