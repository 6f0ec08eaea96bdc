#include "effect/item/EffectItemNumberGroup.h"

#include "effect/item/EffectItemNumber.h"
#include "effect/item/ItemText.h"

namespace Effect {

EffectItemNumberGroup::EffectItemNumberGroup(const EffectItemNumberGroup& other)
    : ItemValue(other), linked_(other.linked_) {}

void EffectItemNumberGroup::fromString(std::string_view text) {
  linked_ = ItemText::parseInt(text, "Effect::EffectItemNumberGroup::fromString") != 0;
}

void EffectItemNumberGroup::join(EffectItemNumber& member) {
  members_.push_back(&member);
  member.setGroup(this);
}

}  // namespace Effect
