// Choices from a list: a drop-down, a choice within a row of buttons, and the font. The
// string form is the label, so that files stay readable when lists gain entries.
#pragma once

#include <cstdint>
#include <memory>

#include "effect/item/EffectItem.h"
#include "effect/item/SelectList.h"

namespace Effect {

class EffectItemSelect : public ItemValue<EffectItemSelect, EffectItem> {
 public:
  EffectItemSelect(std::wstring name, std::shared_ptr<const SelectList> list, std::int32_t defaultKey,
                   ItemKind kind = ItemKind::Select);

  void copyValue(const EffectItemSelect& other) { value_ = other.value_; }
  bool sameValue(const EffectItemSelect& other) const { return value_ == other.value_; }

  std::string toString() const override;
  // A label the list does not hold leaves the value as it was.
  void fromString(std::string_view text) override;
  // Texts of up to two bytes are keys in decimal, longer ones labels.
  void fromLegacy(std::string_view text, std::string_view key, std::wstring_view effectName, bool flag) override;

  std::int32_t value() const noexcept { return value_; }
  // A key the list does not hold selects the smallest key.
  void setValue(std::int32_t key);
  const SelectList& list() const noexcept { return *list_; }
  const std::shared_ptr<const SelectList>& sharedList() const noexcept { return list_; }

 protected:
  void setList(std::shared_ptr<const SelectList> list) { list_ = std::move(list); }

 private:
  std::shared_ptr<const SelectList> list_;
  std::int32_t value_ = 0;
};

// `left` and `right` place the choice in its row, as fractions of the row's width.
class EffectItemSelectButton : public ItemValue<EffectItemSelectButton, EffectItemSelect> {
 public:
  EffectItemSelectButton(std::wstring name, std::shared_ptr<const SelectList> list, std::int32_t defaultKey,
                         float left, float right)
      : ItemValue(std::move(name), std::move(list), defaultKey, ItemKind::SelectButton), left_(left), right_(right) {}

  float left() const noexcept { return left_; }
  float right() const noexcept { return right_; }

 private:
  float left_;
  float right_;
};

// One of the installed fonts, the default one to start with. A font that this machine
// does not have is kept by its name, so a project moved between machines keeps it.
class EffectItemFontSelect : public ItemValue<EffectItemFontSelect, EffectItemSelect> {
 public:
  explicit EffectItemFontSelect(std::wstring name);

  void fromString(std::string_view text) override;

  // The installed fonts, built on first use; fonts met in files are added behind them.
  static std::shared_ptr<const SelectList> fontList();
  // Rebuilds the list from the environment (after fonts were installed, and in tests).
  static void resetFontList();
};

}  // namespace Effect
