#include "plugin/OutputPlugin.h"

#include <algorithm>
#include <charconv>
#include <regex>

#include "system/ConfigParameter.h"
#include "system/Text.h"

namespace Plugin {

OutputPlugin::OutputPlugin(std::wstring name, std::wstring fileFilter, std::uint32_t flags)
    : name_(std::move(name)), fileFilter_(std::move(fileFilter)), flags_(flags) {
  config_.setSection("Output." + System::Text::toUtf8(name_));
}

OutputPlugin::~OutputPlugin() = default;

std::vector<std::wstring> OutputPlugin::extensions() const {
  std::vector<std::wstring> found;
  static const std::wregex pattern(L"\\*\\.([A-Za-z0-9]+)");
  for (std::wsregex_iterator it(fileFilter_.begin(), fileFilter_.end(), pattern), end; it != end; ++it) {
    std::wstring extension = (*it)[1].str();
    std::transform(extension.begin(), extension.end(), extension.begin(), [](wchar_t c) { return std::towlower(c); });
    found.push_back(extension);
  }
  return found;
}

void OutputPlugin::loadSettings(System::IniFile* ini) { config_.load(ini); }

void OutputPlugin::addSetting(const char* key, std::wstring* value, std::wstring defaultValue,
                              std::vector<std::wstring> allowed) {
  config_.add<System::Config::String>(key, value, std::move(defaultValue));
  settings_.emplace_back(key, TextSetting{value, std::move(allowed)});
}

void OutputPlugin::addSetting(const char* key, std::int32_t* value, std::int32_t defaultValue, std::int32_t minimum,
                              std::int32_t maximum) {
  config_.add<System::Config::Int>(key, value, defaultValue);
  settings_.emplace_back(key, NumberSetting{value, minimum, maximum});
}

std::vector<std::string> OutputPlugin::settingKeys() const {
  std::vector<std::string> keys;
  for (const auto& [key, setting] : settings_) keys.push_back(key);
  return keys;
}

std::optional<std::string> OutputPlugin::overrideSetting(const std::string& key, const std::wstring& value) {
  const auto found = std::find_if(settings_.begin(), settings_.end(), [&](const auto& entry) { return entry.first == key; });
  if (found == settings_.end()) return "no setting " + key;
  if (auto* text = std::get_if<TextSetting>(&found->second)) {
    if (std::find(text->allowed.begin(), text->allowed.end(), value) == text->allowed.end()) {
      return key + " takes " + [&] {
        std::string list;
        for (const std::wstring& allowed : text->allowed) list += (list.empty() ? "" : ", ") + System::Text::toUtf8(allowed);
        return list;
      }();
    }
    *text->value = value;
    return std::nullopt;
  }
  const NumberSetting& number = std::get<NumberSetting>(found->second);
  const std::string utf8 = System::Text::toUtf8(value);
  std::int32_t parsed = 0;
  const auto [end, error] = std::from_chars(utf8.data(), utf8.data() + utf8.size(), parsed);
  if (error != std::errc{} || end != utf8.data() + utf8.size() || parsed < number.minimum || parsed > number.maximum) {
    return key + " takes a whole number from " + std::to_string(number.minimum) + " to " + std::to_string(number.maximum);
  }
  *number.value = parsed;
  return std::nullopt;
}

}  // namespace Plugin
