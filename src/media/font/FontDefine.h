// One installed font as an entry of the user's font menu: its order and visibility are
// kept in the main ini under "Font.<name>", and the menu dialog edits them. Made and
// changed on the main thread.
#pragma once

#include <cstdint>
#include <string>

#include "menu/MenuDefineBase.h"

namespace Media {

class FontDefine : public Menu::MenuDefineBase {
 public:
  // An order the main ini does not know yet: such fonts go behind the known ones.
  static constexpr std::int32_t kUnlisted = INT32_MAX;

  explicit FontDefine(const std::wstring& name) : MenuDefineBase("Font", name, kUnlisted, name, true), name_(name) {}

  const std::wstring& name() const noexcept { return name_; }

 private:
  std::wstring name_;
};

}  // namespace Media
