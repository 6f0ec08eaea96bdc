// An entry of a menu list that the user can reorder, relabel and hide (effects, aliases,
// movements, time-control presets, colours, fonts): its settings are a group of the
// main ini named "<list>.<key>". Made and changed on the main thread.
#pragma once

#include <cstdint>
#include <string>

#include "system/ConfigGroup.h"

namespace Menu {

class MenuDefineBase {
 public:
  // `list` is "Effect", "Movement", "Params", "Color" or "Font".
  MenuDefineBase(const char* list, const std::wstring& key, std::int32_t order, const std::wstring& label,
                 bool visible);
  virtual ~MenuDefineBase() = default;
  MenuDefineBase(const MenuDefineBase&) = delete;
  MenuDefineBase& operator=(const MenuDefineBase&) = delete;

  const std::wstring& menuLabel() const noexcept { return label_; }
  std::int32_t menuOrder() const noexcept { return order_; }
  bool menuHidden() const noexcept { return hide_ != 0; }
  void setMenuLabel(std::wstring label) { label_ = std::move(label); }
  void setMenuOrder(std::int32_t order) noexcept { order_ = order; }
  void setMenuHidden(bool hidden) noexcept { hide_ = hidden ? 1 : 0; }

 private:
  std::wstring label_;
  std::int32_t order_ = 0;
  std::int32_t hide_ = 0;
  // Declared last: it stores the members above when it is destroyed, first of all.
  System::Config::Group group_;
};

}  // namespace Menu
