// A colour; kind 14 may also be "not set" (a key colour not yet picked from the
// preview). Written as six lower-case hexadecimal digits, or empty when not set.
#pragma once

#include <cstdint>

#include "effect/item/EffectItem.h"

namespace Effect {

class EffectItemColor : public ItemValue<EffectItemColor, EffectItem> {
 public:
  // `rgb` is 0xRRGGBB.
  EffectItemColor(std::wstring name, std::uint32_t rgb, bool unset = false, ItemKind kind = ItemKind::Color);

  void copyValue(const EffectItemColor& other);
  bool sameValue(const EffectItemColor& other) const;

  std::string toString() const override;
  // Empty text is "not set"; otherwise hexadecimal, or "RGB argument is invalid.".
  void fromString(std::string_view text) override;
  // A decimal or 0x number; a text that is neither goes to fromString.
  void fromScriptDefault(std::string_view text) override;
  void fromLegacy(std::string_view text, std::string_view key, std::wstring_view effectName, bool flag) override;

  std::uint8_t r() const noexcept { return r_; }
  std::uint8_t g() const noexcept { return g_; }
  std::uint8_t b() const noexcept { return b_; }
  bool unset() const noexcept { return unset_; }
  std::uint32_t rgb() const noexcept { return static_cast<std::uint32_t>(r_) << 16 | g_ << 8 | b_; }
  void setRgb(std::uint32_t rgb) noexcept;
  void setUnset(bool unset) noexcept { unset_ = unset; }

 private:
  std::uint8_t r_ = 0;
  std::uint8_t g_ = 0;
  std::uint8_t b_ = 0;
  bool unset_ = false;
};

}  // namespace Effect
