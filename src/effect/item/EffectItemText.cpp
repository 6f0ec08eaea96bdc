#include "effect/item/EffectItemText.h"

#include "system/NumberText.h"
#include "system/Text.h"

namespace Effect {

std::string EffectItemText::toString() const {
  std::wstring escaped;
  escaped.reserve(value_.size());
  for (std::size_t i = 0; i < value_.size(); ++i) {
    const wchar_t c = value_[i];
    if (c == L'\\') {
      escaped += L"\\\\";
    } else if (c == L'\r' || c == L'\n') {
      if (c == L'\r' && i + 1 < value_.size() && value_[i + 1] == L'\n') ++i;
      escaped += L"\\n";
    } else {
      escaped += c;
    }
  }
  return System::Text::toUtf8(escaped);
}

void EffectItemText::fromString(std::string_view text) {
  const std::wstring wide = System::Text::fromUtf8(text);
  std::wstring value;
  value.reserve(wide.size());
  for (std::size_t i = 0; i < wide.size(); ++i) {
    if (wide[i] == L'\\' && i + 1 < wide.size() && (wide[i + 1] == L'\\' || wide[i + 1] == L'n')) {
      value += wide[i + 1] == L'n' ? L'\n' : L'\\';
      ++i;
    } else {
      value += wide[i];
    }
  }
  value_ = std::move(value);
}

void EffectItemText::fromLegacy(std::string_view text, std::string_view key, std::wstring_view /*effectName*/,
                                bool /*flag*/) {
  if (key != "text") {
    fromString(text);
    return;
  }
  // The field is padded with zero units behind the text.
  std::u16string units;
  for (std::size_t at = 0; at + 4 <= text.size(); at += 4) {
    int digits[4];
    for (int k = 0; k < 4; ++k) digits[k] = System::NumberText::hexDigit(text[at + k]);
    if (digits[0] < 0 || digits[1] < 0 || digits[2] < 0 || digits[3] < 0) break;
    const auto unit = static_cast<char16_t>((digits[0] << 4 | digits[1]) | (digits[2] << 4 | digits[3]) << 8);
    if (unit == 0) break;
    units += unit;
  }
  std::wstring value;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char32_t unit = units[i];
    if (unit >= 0xd800 && unit < 0xdc00 && i + 1 < units.size() && units[i + 1] >= 0xdc00 && units[i + 1] < 0xe000) {
      value += static_cast<wchar_t>(0x10000 + ((unit - 0xd800) << 10) + (units[i + 1] - 0xdc00));
      ++i;
    } else {
      value += static_cast<wchar_t>(unit);
    }
  }
  value_ = std::move(value);
}

}  // namespace Effect
