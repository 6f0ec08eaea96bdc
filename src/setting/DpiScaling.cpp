#include "setting/DpiScaling.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace Setting {

namespace {

std::string scaled(const System::IniFile::VALUE& value, float scale) {
  // A value that is not a number scales from 0, as a failed read gives the default 0.
  const std::int32_t number = value.tryInt().value_or(0);
  return std::to_string(std::max<std::int32_t>(1, static_cast<std::int32_t>(std::lround(number * scale))));
}

}  // namespace

float applyDpiScaling(System::IniFile& mainIni, System::IniFile& style, int dpi) {
  const std::int32_t mode = mainIni.section("Direct3D").find("HighDpiMode").tryInt().value_or(0);
  if (mode == 0 || dpi == 96 || dpi <= 0) return 1.0f;
  const float scale = static_cast<float>(dpi / 96.0);

  for (auto& entry : style.section("Layout")) entry.value.text = scaled(entry.value, scale);

  for (auto& entry : style.section("Font")) {
    std::string& text = entry.value.text;
    const std::size_t comma = text.find(',');
    const System::IniFile::VALUE size(text.substr(0, comma), nullptr, 0);
    text = comma == std::string::npos ? scaled(size, scale) : scaled(size, scale) + text.substr(comma);
  }
  return scale;
}

}  // namespace Setting
