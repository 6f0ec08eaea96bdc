#include "setting/FrameRateMap.h"

#include <cmath>
#include <optional>

namespace Setting {

namespace {

// "rate,scale" with the scale optional; nothing for an entry that does not read.
std::optional<Rational> parsePair(const System::IniFile::VALUE& value) {
  const std::vector<System::IniFile::VALUE> parts = value.split(",");
  const std::optional<std::int32_t> rate = parts[0].tryInt();
  if (!rate) return std::nullopt;
  Rational pair{*rate, 1};
  if (parts.size() > 1) {
    const std::optional<std::int32_t> scale = parts[1].tryInt();
    if (!scale) return std::nullopt;
    pair.scale = *scale;
  }
  return pair;
}

std::optional<double> parseKey(const std::string& key) {
  return System::IniFile::VALUE(key, nullptr, 0).tryDouble();
}

}  // namespace

Rational frameRateToRational(const System::IniFile::SectionRef& section, double value) {
  for (const auto& entry : section) {
    const std::optional<double> number = parseKey(entry.key);
    if (!number || *number != value) continue;
    if (const std::optional<Rational> pair = parsePair(entry.value)) return *pair;
  }
  std::int64_t rate = std::llround(value * 1000000.0);
  std::int64_t scale = 1000000;
  while (rate % 10 == 0 && scale > 1) {
    rate /= 10;
    scale /= 10;
  }
  return Rational{static_cast<std::int32_t>(rate), static_cast<std::int32_t>(scale)};
}

double rationalToFrameRate(const System::IniFile::SectionRef& section, std::int32_t rate, std::int32_t scale) {
  const Rational wanted{rate, scale};
  for (const auto& entry : section) {
    const std::optional<Rational> pair = parsePair(entry.value);
    if (!pair || *pair != wanted) continue;
    if (const std::optional<double> number = parseKey(entry.key)) return *number;
  }
  return scale == 0 ? 0.0 : static_cast<double>(rate) / static_cast<double>(scale);
}

}  // namespace Setting
