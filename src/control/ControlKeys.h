// The characters that keys make on their own, for the controls' charInput: Ctrl with a
// letter gives 1 to 26 (Ctrl+C is 3, copy), and Backspace, Tab, Return and Esc give 8,
// 9, 13 and 27. Used by the platform's key adapter, so every platform types the same.
#pragma once

#include <cstdint>

#include "window/PlatformWindow.h"

namespace Control {

// The character of virtual key `key` with `modifiers`, or 0 when the key makes none
// by itself (its text, if any, comes from the keyboard layout).
constexpr std::uint32_t controlCharacter(std::int32_t key, std::uint32_t modifiers) noexcept {
  const bool control = (modifiers & Window::kModifierControl) != 0;
  const bool alt = (modifiers & Window::kModifierAlt) != 0;
  if (control && !alt && key >= 65 && key <= 90) return static_cast<std::uint32_t>(key - 64);
  switch (key) {
    case 8:
    case 9:
    case 13:
    case 27:
      return alt ? 0u : static_cast<std::uint32_t>(key);
    default:
      return 0;
  }
}

}  // namespace Control
