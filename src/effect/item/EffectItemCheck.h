// On/off items: a check box, a check box whose script value is 0 or 1, and a toggle
// button that stands in a row with others.
#pragma once

#include "effect/item/EffectItem.h"

namespace Effect {

class EffectItemCheck : public ItemValue<EffectItemCheck, EffectItem> {
 public:
  EffectItemCheck(std::wstring name, bool on, ItemKind kind = ItemKind::Check)
      : ItemValue(kind, std::move(name)), value_(on) {}

  void copyValue(const EffectItemCheck& other) { value_ = other.value_; }
  bool sameValue(const EffectItemCheck& other) const { return value_ == other.value_; }

  std::string toString() const override { return value_ ? "1" : "0"; }
  // A decimal integer; anything but 0 is on.
  void fromString(std::string_view text) override;

  bool value() const noexcept { return value_; }
  void setValue(bool on) noexcept { value_ = on; }

 private:
  bool value_;
};

class EffectItemCheckInteger : public ItemValue<EffectItemCheckInteger, EffectItemCheck> {
 public:
  EffectItemCheckInteger(std::wstring name, bool on) : ItemValue(std::move(name), on, ItemKind::CheckInteger) {}
};

// `left` and `right` place the button in its row, as fractions of the row's width.
class EffectItemCheckButton : public ItemValue<EffectItemCheckButton, EffectItemCheck> {
 public:
  EffectItemCheckButton(std::wstring name, bool on, float left, float right)
      : ItemValue(std::move(name), on, ItemKind::CheckButton), left_(left), right_(right) {}

  float left() const noexcept { return left_; }
  float right() const noexcept { return right_; }

 private:
  float left_;
  float right_;
};

}  // namespace Effect
