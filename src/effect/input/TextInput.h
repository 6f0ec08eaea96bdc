// テキスト: text drawn in a font with decoration and alignment, whole or one object per
// character.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class TextInput final : public EffectInstance<TextInput> {
 public:
  static const EffectInfo kInfo;
  TextInput() : EffectInstance(kInfo) {}
};

}  // namespace Effect
