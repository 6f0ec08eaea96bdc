#include "plugin/InputPlugin.h"

#include "system/ConfigParameter.h"
#include "system/Exception.h"
#include "system/Text.h"

namespace Plugin {

namespace {

std::vector<std::wstring> split(const std::wstring& text, wchar_t separator) {
  std::vector<std::wstring> parts;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find(separator, start);
    parts.push_back(text.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start));
    if (end == std::wstring::npos) return parts;
    start = end + 1;
  }
}

}  // namespace

InputPlugin::InputPlugin(std::wstring name, std::vector<std::wstring> fileFilter, std::wstring information,
                         std::uint32_t kindFlags)
    : name_(std::move(name)),
      fileFilter_(std::move(fileFilter)),
      information_(std::move(information)),
      kindFlags_(kindFlags),
      sectionKey_("Input." + System::Text::toUtf8(name_)) {}

InputPlugin::~InputPlugin() = default;

void InputPlugin::showSetting(void*) { throw System::NoteException("Plugin::InputPlugin::showSetting", "not implement."); }

void InputPlugin::setupSection(std::int32_t registrationIndex, System::IniFile* ini) {
  defaultPriority_ = registrationIndex;
  settings_ = std::make_unique<System::Config::Group>();
  settings_->setSection(sectionKey_);
  settings_->add<System::Config::Int>("priority", &priority_, registrationIndex);
  settings_->add<System::Config::String>("ext", &extOverride_, L"");
  settings_->load(ini);
}

std::vector<std::wstring> InputPlugin::getExtList() const {
  return extOverride_.empty() ? filterExtensions() : split(extOverride_, L',');
}

std::vector<std::wstring> InputPlugin::filterExtensions() const {
  std::vector<std::wstring> extensions;
  // Pairs of description and pattern list; an empty entry ends the filter.
  for (std::size_t i = 1; i < fileFilter_.size(); i += 2) {
    if (fileFilter_[i - 1].empty() || fileFilter_[i].empty()) break;
    for (const std::wstring& pattern : split(fileFilter_[i], L';')) {
      if (pattern.rfind(L"*.", 0) != 0) continue;
      const std::wstring extension = System::Text::toLowerAscii(pattern.substr(2));
      // "*.*" and the like name no extension.
      if (extension.empty() || extension[0] == L'*') continue;
      extensions.push_back(extension);
    }
  }
  return extensions;
}

std::wstring InputPlugin::defaultExtList() const {
  std::wstring joined;
  for (const std::wstring& extension : filterExtensions()) joined += (joined.empty() ? L"" : L",") + extension;
  return joined;
}

void InputPlugin::setExtList(const std::wstring& list) {
  extOverride_ = list.empty() || list == defaultExtList() ? std::wstring() : list;
}

}  // namespace Plugin
