// Links two or three numbers (X, Y and Z of a position) to one curve. It shows no value
// of its own; its string form is whether the link is on. The effect's constructor joins
// the members.
#pragma once

#include <vector>

#include "effect/item/EffectItem.h"

namespace Effect {

class EffectItemNumber;

class EffectItemNumberGroup : public ItemValue<EffectItemNumberGroup, EffectItem> {
 public:
  explicit EffectItemNumberGroup(std::wstring name) : ItemValue(ItemKind::NumberGroup, std::move(name)) {}
  // A copy belongs to no effect: its members are joined by the effect that owns it.
  EffectItemNumberGroup(const EffectItemNumberGroup& other);

  void copyValue(const EffectItemNumberGroup& other) { linked_ = other.linked_; }
  bool sameValue(const EffectItemNumberGroup& other) const { return linked_ == other.linked_; }

  std::string toString() const override { return linked_ ? "1" : "0"; }
  void fromString(std::string_view text) override;

  bool linked() const noexcept { return linked_; }
  void setLinked(bool linked) noexcept { linked_ = linked; }
  const std::vector<EffectItemNumber*>& members() const noexcept { return members_; }
  void join(EffectItemNumber& member);

 private:
  std::vector<EffectItemNumber*> members_;
  bool linked_ = true;
};

}  // namespace Effect
