// The multi-line text of テキスト. In files a backslash is doubled and a line end is
// written "\n", so that the text stays on its one line of the ini form.
#pragma once

#include "effect/item/EffectItem.h"

namespace Effect {

class EffectItemText : public ItemValue<EffectItemText, EffectItem> {
 public:
  explicit EffectItemText(std::wstring name) : ItemValue(ItemKind::Text, std::move(name)) {}

  void copyValue(const EffectItemText& other) { value_ = other.value_; }
  bool sameValue(const EffectItemText& other) const { return value_ == other.value_; }

  // CR LF, CR and LF all come back as LF.
  std::string toString() const override;
  // "\\" is a backslash, "\n" a line feed; any other pair stays as it stands.
  void fromString(std::string_view text) override;
  // The legacy key `text` holds UTF-16 in hexadecimal, four digits a unit, low byte first.
  void fromLegacy(std::string_view text, std::string_view key, std::wstring_view effectName, bool flag) override;

  const std::wstring& value() const noexcept { return value_; }
  void setValue(std::wstring value) { value_ = std::move(value); }

 private:
  std::wstring value_;
};

}  // namespace Effect
