#include "effect/item/EffectItemCheck.h"

#include "effect/item/ItemText.h"

namespace Effect {

void EffectItemCheck::fromString(std::string_view text) {
  value_ = ItemText::parseInt(text, "Effect::EffectItemCheck::fromString") != 0;
}

}  // namespace Effect
