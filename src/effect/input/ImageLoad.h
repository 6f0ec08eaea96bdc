// 画像ファイル: a still image, or one picture of a numbered file sequence.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ImageLoad final : public EffectInstance<ImageLoad> {
 public:
  static const EffectInfo kInfo;
  ImageLoad() : EffectInstance(kInfo) {}
};

}  // namespace Effect
