// A media file of the effect; its string form is the path.
#pragma once

#include <functional>

#include "effect/item/EffectItem.h"

namespace Effect {

class EffectItemFile : public ItemValue<EffectItemFile, EffectItem> {
 public:
  // `filter` names the table of file types that the file dialog offers.
  EffectItemFile(std::wstring name, std::wstring filter)
      : ItemValue(ItemKind::File, std::move(name)), filter_(std::move(filter)) {}

  void copyValue(const EffectItemFile& other) { filePath_ = other.filePath_; }
  bool sameValue(const EffectItemFile& other) const { return filePath_ == other.filePath_; }

  std::string toString() const override;
  void fromString(std::string_view text) override;
  std::optional<std::wstring> getFilePath() const override { return filePath_; }
  void setFilePath(const std::wstring& path) override;

  const std::wstring& filter() const noexcept { return filter_; }

 private:
  std::wstring filter_;
  std::wstring filePath_;
};

// Text that scripts keep: a plain string (kind 5), a variable (100) or an array (101).
class EffectItemString : public ItemValue<EffectItemString, EffectItem> {
 public:
  EffectItemString(std::wstring name, std::wstring value, ItemKind kind = ItemKind::String)
      : ItemValue(kind, std::move(name)), value_(std::move(value)) {
    if (kind != ItemKind::String) setVisible(false);
  }

  void copyValue(const EffectItemString& other) { value_ = other.value_; }
  bool sameValue(const EffectItemString& other) const { return value_ == other.value_; }

  std::string toString() const override;
  void fromString(std::string_view text) override;

  const std::wstring& value() const noexcept { return value_; }
  void setValue(std::wstring value) { value_ = std::move(value); }

 private:
  std::wstring value_;
};

// A push button of the settings window; it has no value.
class EffectItemButton : public ItemValue<EffectItemButton, EffectItem> {
 public:
  EffectItemButton(std::wstring name, float left, float right)
      : ItemValue(ItemKind::Button, std::move(name)), left_(left), right_(right) {}

  void copyValue(const EffectItemButton& /*other*/) {}
  bool sameValue(const EffectItemButton& /*other*/) const { return true; }
  std::string toString() const override { return {}; }
  void fromString(std::string_view /*text*/) override {}

  float left() const noexcept { return left_; }
  float right() const noexcept { return right_; }
  std::function<void()> onPressed;

 private:
  float left_;
  float right_;
};

}  // namespace Effect
