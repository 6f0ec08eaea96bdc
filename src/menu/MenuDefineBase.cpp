#include "menu/MenuDefineBase.h"

#include "system/MainIniFile.h"
#include "system/Text.h"

namespace Menu {

MenuDefineBase::MenuDefineBase(const char* list, const std::wstring& key, std::int32_t order,
                               const std::wstring& label, bool visible) {
  group_.setSection(std::string(list) + "." + System::Text::toUtf8(key));
  group_.add<System::Config::String>("label", &label_, label);
  group_.add<System::Config::Int>("order", &order_, order);
  group_.add<System::Config::Int>("hide", &hide_, visible ? 0 : 1);
  group_.load(System::MainIniFile::get());
}

}  // namespace Menu
