// Turns Qt's key events into the virtual key codes that the controls and the shortcut
// file use, and into the characters the controls type. Letters, digits, function and
// navigation keys go by key; the keypad by its modifier; punctuation by the X keycode,
// so that neither Shift nor the layout changes the code a shortcut is stored under.
#pragma once

#include <cstdint>
#include <string>

class QKeyEvent;

namespace Platform {

struct KeyStroke {
  std::int32_t key = 0;  // 0: a key the program has no code for
  std::uint32_t modifiers = 0;
  std::wstring text;  // what charInput gets, control characters included
};

KeyStroke translateKey(const QKeyEvent& event);
// The code alone; `scanCode` is the X keycode (0 when unknown).
std::int32_t virtualKeyOf(int qtKey, std::uint32_t scanCode, bool keypad);

}  // namespace Platform
