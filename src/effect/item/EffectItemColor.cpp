#include "effect/item/EffectItemColor.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "effect/item/ItemText.h"
#include "system/Exception.h"
#include "system/NumberText.h"
#include "system/Text.h"

namespace Effect {

namespace {

// Digits of `base` from the start of `text`, as strtoul reads them; none, or more than
// 32 bits, is no number.
std::optional<std::uint32_t> readUnsigned(std::string_view text, int base) {
  std::uint64_t value = 0;
  std::size_t digits = 0;
  for (const char c : text) {
    const int digit = System::NumberText::hexDigit(c);
    if (digit < 0 || digit >= base) break;
    value = value * base + digit;
    if (value > 0xffffffffULL) return std::nullopt;
    ++digits;
  }
  if (digits == 0) return std::nullopt;
  return static_cast<std::uint32_t>(value);
}

std::string_view skipBlanks(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  return text;
}

std::uint8_t channel(double value) { return static_cast<std::uint8_t>(std::clamp(std::round(value), 0.0, 255.0)); }

}  // namespace

EffectItemColor::EffectItemColor(std::wstring name, std::uint32_t rgb, bool unset, ItemKind kind)
    : ItemValue(kind, std::move(name)), unset_(unset) {
  setRgb(rgb);
}

void EffectItemColor::copyValue(const EffectItemColor& other) {
  r_ = other.r_;
  g_ = other.g_;
  b_ = other.b_;
  unset_ = other.unset_;
}

bool EffectItemColor::sameValue(const EffectItemColor& other) const {
  return unset_ == other.unset_ && (unset_ || rgb() == other.rgb());
}

void EffectItemColor::setRgb(std::uint32_t rgb) noexcept {
  r_ = static_cast<std::uint8_t>(rgb >> 16);
  g_ = static_cast<std::uint8_t>(rgb >> 8);
  b_ = static_cast<std::uint8_t>(rgb);
}

std::string EffectItemColor::toString() const {
  if (unset_) return {};
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t c : {r_, g_, b_}) {
    text += kDigits[c >> 4];
    text += kDigits[c & 0xf];
  }
  return text;
}

void EffectItemColor::fromString(std::string_view text) {
  if (text.empty()) {
    unset_ = true;
    return;
  }
  const auto value = readUnsigned(skipBlanks(text), 16);
  if (!value) throw System::NoteException("Effect::EffectItemColor::fromString", "RGB argument is invalid.");
  setRgb(*value);
  unset_ = false;
}

void EffectItemColor::fromScriptDefault(std::string_view text) {
  const std::string_view number = skipBlanks(text);
  const bool hex = number.size() > 2 && number[0] == '0' && (number[1] == 'x' || number[1] == 'X');
  if (const auto value = hex ? readUnsigned(number.substr(2), 16) : readUnsigned(number, 10)) {
    setRgb(*value);
    unset_ = false;
    return;
  }
  fromString(text);
}

void EffectItemColor::fromLegacy(std::string_view text, std::string_view key, std::wstring_view /*effectName*/,
                                 bool flag) {
  if (key.substr(0, 3) == "no_") {
    if (ItemText::parseInt(text, "Effect::EffectItemColor::fromLegacy") >= 1) unset_ = true;
    return;
  }
  if (key == "color_yc" && text.size() == 12) {
    // Y, Cb, Cr as signed 16-bit values, each four digits with the low byte first.
    double ycc[3];
    for (int i = 0; i < 3; ++i) {
      const auto low = readUnsigned(text.substr(i * 4, 2), 16);
      const auto high = readUnsigned(text.substr(i * 4 + 2, 2), 16);
      if (!low || !high) throw System::NoteException("Effect::EffectItemColor::fromLegacy", "RGB argument is invalid.");
      ycc[i] = static_cast<std::int16_t>(static_cast<std::uint16_t>(*high << 8 | *low));
    }
    constexpr double k = 0.06225586;
    const double y = ycc[0], cb = ycc[1], cr = ycc[2];
    r_ = channel((y + 1.402 * cr) * k);
    g_ = channel((y - 0.344 * cb - 0.714 * cr) * k);
    b_ = channel((y + 1.772 * cb) * k);
    unset_ = false;
    return;
  }
  if (flag) {
    fromScriptDefault(text);
  } else {
    fromString(text);
  }
}

}  // namespace Effect
