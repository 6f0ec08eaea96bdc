#include "window/PlatformServices.h"

namespace Window {

namespace {

const PopupMenuItem* findIn(const std::vector<PopupMenuItem>& items, const std::wstring& text) {
  for (const PopupMenuItem& item : items) {
    if (item.text == text) return &item;
    if (const PopupMenuItem* found = findIn(item.children, text)) return found;
  }
  return nullptr;
}

}  // namespace

const PopupMenuItem* PopupMenu::find(const std::wstring& text) const { return findIn(items, text); }

}  // namespace Window
