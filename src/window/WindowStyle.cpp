#include "window/WindowStyle.h"

#include <array>
#include <string>

#include "setting/SettingService.h"
#include "system/Exception.h"
#include "system/Text.h"

namespace Window {

namespace {

void readSize(System::IniFile::SectionRef section, const char* key, std::int32_t& size) {
  if (const auto value = section[key].tryInt(); value && *value >= 0) size = *value;
}

// The first colour of a list; a gradient pair "a,b" gives its first colour.
void readColor(System::IniFile::SectionRef section, const char* key, Media::ColorF& color) {
  const System::IniFile::VALUE& value = section[key];
  if (value.empty()) return;
  try {
    std::array<float, 4> rgba{};
    value.split(",").front().toRGBA(rgba);
    color = {rgba[0], rgba[1], rgba[2], rgba[3]};
  } catch (const System::Exception&) {
    // A damaged colour keeps the built-in one; the frame must still draw.
  }
}

}  // namespace

WindowStyle WindowStyle::fromSettings(Setting::SettingService& settings) {
  WindowStyle style;
  System::IniFile::SectionRef layout = settings.layout();
  readSize(layout, "WindowSeparatorSize", style.separatorSize);
  readSize(layout, "FooterHeight", style.footerHeight);
  readSize(layout, "GroupTabHeight", style.groupTabHeight);
  readSize(layout, "TitleHeaderHeight", style.titleHeaderHeight);
  System::IniFile::SectionRef color = settings.color();
  readColor(color, "Background", style.background);
  readColor(color, "WindowSeparator", style.windowSeparator);
  readColor(color, "WindowBorder", style.windowBorder);
  readColor(color, "BorderFocus", style.borderFocus);
  readColor(color, "Footer", style.footer);
  readColor(color, "TitleHeader", style.titleHeader);
  readColor(color, "Text", style.text);
  readColor(color, "ButtonBody", style.buttonBody);
  readColor(color, "ButtonBodySelect", style.buttonBodySelect);
  // "<size>,<family>"
  const std::string font = settings.font()["Control"].text;
  const std::size_t comma = font.find(',');
  if (comma != std::string::npos) {
    try {
      style.font.size = static_cast<float>(std::stoi(font.substr(0, comma)));
    } catch (const std::exception&) {
    }
    style.font.family = System::Text::fromUtf8(font.substr(comma + 1));
  }
  return style;
}

}  // namespace Window
