#include "effect/item/EffectItemInteger.h"

#include "effect/item/ItemText.h"

namespace Effect {

EffectItemInteger::EffectItemInteger(std::wstring name, std::int32_t defaultValue, std::int32_t minimum,
                                     std::int32_t maximum, ItemKind kind)
    : ItemValue(kind, std::move(name)),
      value_(defaultValue),
      minValue_(minimum),
      defaultValue_(defaultValue),
      maxValue_(maximum) {
  if (kind == ItemKind::HiddenInteger) setVisible(false);
}

void EffectItemInteger::fromString(std::string_view text) {
  value_ = ItemText::parseInt(text, "Effect::EffectItemInteger::fromString");
}

}  // namespace Effect
