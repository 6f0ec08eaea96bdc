#include "platform/qt/QtKeyAdapter.h"

#include <QKeyEvent>

#include "control/ControlKeys.h"
#include "window/PlatformWindow.h"

namespace Platform {

namespace {

struct Code {
  int from;
  std::int32_t vk;
};

// Keys that mean the same on every layout.
constexpr Code kByKey[] = {
    {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},         {Qt::Key_Backtab, 9},    {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},    {Qt::Key_Shift, 16},      {Qt::Key_Control, 17},   {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},    {Qt::Key_CapsLock, 20},   {Qt::Key_Escape, 27},    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},   {Qt::Key_PageDown, 34},   {Qt::Key_End, 35},       {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},     {Qt::Key_Up, 38},         {Qt::Key_Right, 39},     {Qt::Key_Down, 40},
    {Qt::Key_Print, 44},    {Qt::Key_Insert, 45},     {Qt::Key_Delete, 46},    {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144}, {Qt::Key_ScrollLock, 145},
};

// The keypad, told apart by Qt's keypad modifier.
constexpr Code kKeypad[] = {
    {Qt::Key_0, 96},         {Qt::Key_1, 97},         {Qt::Key_2, 98},      {Qt::Key_3, 99},
    {Qt::Key_4, 100},        {Qt::Key_5, 101},        {Qt::Key_6, 102},     {Qt::Key_7, 103},
    {Qt::Key_8, 104},        {Qt::Key_9, 105},        {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},
    {Qt::Key_Minus, 109},    {Qt::Key_Period, 110},   {Qt::Key_Comma, 110}, {Qt::Key_Slash, 111},
    {Qt::Key_Enter, 13},
};

// X keycodes of the punctuation, digit and letter keys of a PC keyboard (evdev), with
// the code of the key at that place on a US keyboard. The JIS keys 97 (ろ) and 132 (¥)
// take the codes of the keys they stand beside.
constexpr Code kByScanCode[] = {
    {20, 189}, {21, 187}, {34, 219}, {35, 221}, {47, 186}, {48, 222}, {49, 192}, {51, 220},
    {59, 188}, {60, 190}, {61, 191}, {94, 226}, {97, 226}, {132, 220},
    {10, 49},  {11, 50},  {12, 51},  {13, 52},  {14, 53},  {15, 54},  {16, 55},  {17, 56},  {18, 57},  {19, 48},
    {24, 81},  {25, 87},  {26, 69},  {27, 82},  {28, 84},  {29, 89},  {30, 85},  {31, 73},  {32, 79},  {33, 80},
    {38, 65},  {39, 83},  {40, 68},  {41, 70},  {42, 71},  {43, 72},  {44, 74},  {45, 75},  {46, 76},
    {52, 90},  {53, 88},  {54, 67},  {55, 86},  {56, 66},  {57, 78},  {58, 77},
};

// Without a keycode (another platform, a synthetic event) punctuation goes by key.
constexpr Code kPunctuationByKey[] = {
    {Qt::Key_Semicolon, 186}, {Qt::Key_Colon, 186},       {Qt::Key_Plus, 187},       {Qt::Key_Equal, 187},
    {Qt::Key_Comma, 188},     {Qt::Key_Less, 188},        {Qt::Key_Minus, 189},      {Qt::Key_Underscore, 189},
    {Qt::Key_Period, 190},    {Qt::Key_Greater, 190},     {Qt::Key_Slash, 191},      {Qt::Key_Question, 191},
    {Qt::Key_QuoteLeft, 192}, {Qt::Key_AsciiTilde, 192},  {Qt::Key_BracketLeft, 219}, {Qt::Key_BraceLeft, 219},
    {Qt::Key_Backslash, 220}, {Qt::Key_Bar, 220},         {Qt::Key_BracketRight, 221}, {Qt::Key_BraceRight, 221},
    {Qt::Key_Apostrophe, 222}, {Qt::Key_QuoteDbl, 222},
};

template <std::size_t N>
std::int32_t lookUp(const Code (&table)[N], int from) {
  for (const Code& code : table) {
    if (code.from == from) return code.vk;
  }
  return 0;
}

std::uint32_t modifiersOf(Qt::KeyboardModifiers modifiers) {
  std::uint32_t result = 0;
  if (modifiers & Qt::ShiftModifier) result |= Window::kModifierShift;
  if (modifiers & Qt::ControlModifier) result |= Window::kModifierControl;
  if (modifiers & Qt::AltModifier) result |= Window::kModifierAlt;
  return result;
}

}  // namespace

std::int32_t virtualKeyOf(int qtKey, std::uint32_t scanCode, bool keypad) {
  if (keypad) {
    if (const std::int32_t vk = lookUp(kKeypad, qtKey)) return vk;
    // With Num Lock off the keypad moves the caret like the navigation keys.
  }
  if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24) return 112 + (qtKey - Qt::Key_F1);
  if (const std::int32_t vk = lookUp(kByKey, qtKey)) return vk;
  if (scanCode != 0 && !keypad) {
    if (const std::int32_t vk = lookUp(kByScanCode, static_cast<int>(scanCode))) return vk;
  }
  if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) return qtKey;  // 65 to 90 in both
  if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) return qtKey;  // 48 to 57 in both
  return lookUp(kPunctuationByKey, qtKey);
}

KeyStroke translateKey(const QKeyEvent& event) {
  KeyStroke stroke;
  stroke.modifiers = modifiersOf(event.modifiers());
  stroke.key = virtualKeyOf(event.key(), event.nativeScanCode(), (event.modifiers() & Qt::KeypadModifier) != 0);
  if (const std::uint32_t character = Control::controlCharacter(stroke.key, stroke.modifiers)) {
    stroke.text.assign(1, static_cast<wchar_t>(character));
    return stroke;
  }
  if ((stroke.modifiers & Window::kModifierControl) != 0) return stroke;  // shortcuts type nothing
  const QString text = event.text();
  if (!text.isEmpty() && text.at(0).unicode() >= 32 && text.at(0).unicode() != 127) {
    stroke.text = text.toStdWString();
  }
  return stroke;
}

}  // namespace Platform
