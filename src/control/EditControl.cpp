#include "control/EditControl.h"

#include <algorithm>
#include <cmath>
#include <cwctype>

#include "control/WindowMouseService.h"

namespace Control {

namespace {

constexpr std::int32_t kShift = Window::kModifierShift;
constexpr std::int32_t kControl = Window::kModifierControl;

bool lowSurrogate(wchar_t c) { return c >= 56320 && c <= 57343; }

// Word characters, spaces and the rest: a word boundary is a change of class.
int characterClass(wchar_t c) {
  if (std::iswspace(static_cast<wint_t>(c))) return 0;
  if (std::iswalnum(static_cast<wint_t>(c)) || c == L'_' || c >= 0x80) return 1;
  return 2;
}

}  // namespace

EditControl::EditControl(Window::WindowControl* parent, bool multi)
    : Window::WindowControlRenderTarget(parent), multiline(multi) {
  acceptsFocus = true;
  acceptsWheel = true;
  acceptsContextMenu = true;
}

EditControl::~EditControl() { stopBlink(); }

void EditControl::setText(const std::wstring& text) {
  text_ = text;
  undo_.clear();
  lastWasTyping_ = false;
  anchor = caret = selStart = selEnd = text_.size();
  scrollX = scrollY = 0.0f;
  layout_.reset();
  paint();
}

void EditControl::setSelection(std::size_t newAnchor, std::size_t newCaret) {
  anchor = std::min(newAnchor, text_.size());
  caret = std::min(newCaret, text_.size());
  selStart = std::min(anchor, caret);
  selEnd = std::max(anchor, caret);
  scrollToCaret();
  paint();
}

const Media::TextLayout& EditControl::layout() {
  std::wstring shown = text_;
  if (!preedit_.empty()) shown.insert(caret, preedit_);
  if (!layout_ || shown != layoutText_) {
    const float width = multiline ? std::max(1.0f, static_cast<float>(rect.w) - 2 * kPadding) : 1.0e6f;
    layout_ = service()->target().createTextLayout(shown, service()->style().font, width, 1.0e6f);
    layoutText_ = shown;
  }
  return *layout_;
}

float EditControl::lineHeight() {
  const std::vector<Media::TextLayout::Line> lines = layout().lines();
  return lines.empty() || lines.front().height <= 0.0f ? service()->style().font.size : lines.front().height;
}

std::size_t EditControl::nextCharacter(std::size_t position) const noexcept {
  if (position >= text_.size()) return text_.size();
  ++position;
  if (position < text_.size() && lowSurrogate(text_[position])) ++position;
  return position;
}

std::size_t EditControl::previousCharacter(std::size_t position) const noexcept {
  if (position == 0) return 0;
  --position;
  if (position > 0 && lowSurrogate(text_[position])) --position;
  return position;
}

std::size_t EditControl::nextWord(std::size_t position) const noexcept {
  if (position >= text_.size()) return text_.size();
  const int kind = characterClass(text_[position]);
  while (position < text_.size() && characterClass(text_[position]) == kind && text_[position] != L'\n') ++position;
  while (position < text_.size() && characterClass(text_[position]) == 0 && text_[position] != L'\n') ++position;
  if (position < text_.size() && text_[position] == L'\n' && kind == 0) ++position;
  return position;
}

std::size_t EditControl::previousWord(std::size_t position) const noexcept {
  while (position > 0 && characterClass(text_[position - 1]) == 0 && text_[position - 1] != L'\n') --position;
  if (position == 0) return 0;
  if (text_[position - 1] == L'\n') return position - 1;
  const int kind = characterClass(text_[position - 1]);
  while (position > 0 && characterClass(text_[position - 1]) == kind && text_[position - 1] != L'\n') --position;
  return position;
}

std::size_t EditControl::positionAt(float x, float y) {
  const Media::TextLayout::HitTest hit = layout().hitTestPoint(x - kPadding + scrollX, y - kPadding + scrollY);
  std::size_t position = hit.position + (hit.trailing ? 1 : 0);
  position = std::min(position, text_.size());
  if (position < text_.size() && lowSurrogate(text_[position])) ++position;
  return position;
}

void EditControl::lineBounds(std::size_t position, std::size_t& start, std::size_t& end) {
  start = 0;
  end = text_.size();
  if (!multiline) return;
  const std::vector<Media::TextLayout::Line> lines = layout().lines();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::size_t lineEnd = lines[i].start + lines[i].length;
    if (position < lineEnd || i + 1 == lines.size()) {
      start = lines[i].start;
      end = std::min(lineEnd, text_.size());
      if (end > start && text_[end - 1] == L'\n') --end;
      return;
    }
  }
}

void EditControl::moveCaret(std::size_t position, bool extend) {
  if (extend) {
    setSelection(anchor, position);
  } else {
    setSelection(position, position);
  }
  lastWasTyping_ = false;
  restartCaret();
  service()->hideCursorUntilMove();
}

void EditControl::moveLines(std::int32_t lines, bool extend) {
  const std::vector<Media::TextLayout::Line> all = layout().lines();
  if (all.empty()) return;
  std::size_t index = all.size() - 1;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (caret < all[i].start + all[i].length) {
      index = i;
      break;
    }
  }
  // The x of the first of a run of vertical moves is kept, so short lines between
  // do not pull the caret to the left for good.
  if (desiredX_ < 0.0f) desiredX_ = layout().caretAt(caret, false).x;
  const float keep = desiredX_;
  const std::int64_t wanted = std::clamp<std::int64_t>(static_cast<std::int64_t>(index) + lines, 0,
                                                       static_cast<std::int64_t>(all.size()) - 1);
  const Media::TextLayout::Line& line = all[static_cast<std::size_t>(wanted)];
  const Media::TextLayout::HitTest hit = layout().hitTestPoint(desiredX_, line.top + line.height / 2.0f);
  std::size_t lineEnd = std::min(line.start + line.length, text_.size());
  if (lineEnd > line.start && text_[lineEnd - 1] == L'\n') --lineEnd;
  moveCaret(std::clamp(hit.position + (hit.trailing ? 1 : 0), line.start, lineEnd), extend);
  desiredX_ = keep;
}

bool EditControl::keyDown(std::int32_t key) {
  if (keyHandler && keyHandler(key)) return true;
  const std::uint32_t modifiers = service()->modifiers();
  const bool shift = (modifiers & kShift) != 0;
  const bool control = (modifiers & kControl) != 0;
  if (key != 38 && key != 40 && key != 33 && key != 34) desiredX_ = -1.0f;
  switch (key) {
    case 33:
    case 34: {
      const std::int32_t lines =
          std::max<std::int32_t>(1, static_cast<std::int32_t>((static_cast<float>(rect.h) - 8.0f) / lineHeight()));
      moveLines(key == 33 ? -lines : lines, shift);
      return true;
    }
    case 35:
    case 36: {
      std::size_t start = 0;
      std::size_t end = text_.size();
      if (!control) lineBounds(caret, start, end);
      moveCaret(key == 36 ? start : end, shift);
      return true;
    }
    case 37:
      if (!shift && selStart != selEnd && !control) {
        moveCaret(selStart, false);
      } else {
        moveCaret(control ? previousWord(caret) : previousCharacter(caret), shift);
      }
      return true;
    case 39:
      if (!shift && selStart != selEnd && !control) {
        moveCaret(selEnd, false);
      } else {
        moveCaret(control ? nextWord(caret) : nextCharacter(caret), shift);
      }
      return true;
    case 38:
    case 40:
      if (!multiline) return false;
      moveLines(key == 38 ? -1 : 1, shift);
      return true;
    case 45:
      if (control) return charInput(3);
      if (shift) return charInput(22);
      return false;
    case 46:
      if (shift && !control) {
        if (selStart != selEnd) return charInput(24);
        return charInput(8);
      }
      return charInput(127);
    default:
      return false;
  }
}

bool EditControl::charInput(std::uint32_t code) {
  const bool control = (service()->modifiers() & kControl) != 0;
  switch (code) {
    case 3:
      copy();
      return true;
    case 24:
      copy();
      if (selStart != selEnd) edit(selStart, selEnd, std::wstring(), false);
      return true;
    case 22:
      paste();
      return true;
    case 1:
      selectAll();
      return true;
    case 26:
      undo();
      return true;
    case 8:
      deleteRange(false, control);
      return true;
    case 127:
      deleteRange(true, control);
      return true;
    case 9:
      return tabTo((service()->modifiers() & kShift) != 0);
    default:
      break;
  }
  if (code == 13) code = 10;
  if (code == 10 && !multiline) return true;
  if (code < 32 && code != 10) return true;
  const std::wstring character(1, static_cast<wchar_t>(code));
  if (filter_ && !std::regex_match(character, *filter_)) return true;
  edit(selStart, selEnd, character, true);
  return true;
}

void EditControl::imeResult(const std::wstring& text) {
  preedit_.clear();
  for (wchar_t c : text) charInput(static_cast<std::uint32_t>(c));
  paint();
}

void EditControl::setPreedit(const std::wstring& text) {
  preedit_ = text;
  paint();
}

bool EditControl::imeCursor(Media::RectF& where) {
  if (numeric) return false;
  where = caretRect();
  return true;
}

Media::RectF EditControl::caretRect() {
  const Media::TextLayout::Caret at = layout().caretAt(caret, false);
  const float x = static_cast<float>(rect.x) + kPadding + at.x - scrollX;
  const float y = static_cast<float>(rect.y) + kPadding + at.top - scrollY;
  return {x, y, x + 1.0f, y + at.height};
}

void EditControl::deleteRange(bool forward, bool word) {
  if (selStart != selEnd) {
    edit(selStart, selEnd, std::wstring(), false);
    return;
  }
  if (forward) {
    const std::size_t end = word ? nextWord(caret) : nextCharacter(caret);
    if (end > caret) edit(caret, end, std::wstring(), false);
  } else {
    const std::size_t start = word ? previousWord(caret) : previousCharacter(caret);
    if (start < caret) edit(start, caret, std::wstring(), false);
  }
}

bool EditControl::edit(std::size_t from, std::size_t to, const std::wstring& with, bool typing) {
  std::wstring next = text_;
  next.replace(from, to - from, with);
  if (whole_ && !std::regex_match(next, *whole_)) return false;
  // Characters typed one after another undo together.
  const bool merge = typing && lastWasTyping_ && from == to && from == caret && !undo_.empty();
  if (!merge) undo_.push_back({text_, anchor, caret});
  lastWasTyping_ = typing;
  text_ = std::move(next);
  const std::size_t position = from + with.size();
  anchor = caret = selStart = selEnd = position;
  desiredX_ = -1.0f;
  scrollToCaret();
  restartCaret();
  paint();
  if (onChange) onChange();
  return true;
}

void EditControl::replaceSelection(const std::wstring& text) {
  std::wstring adapted;
  for (std::size_t i = 0; i < text.size(); ++i) {
    wchar_t c = text[i];
    if (c == L'\r') {
      if (i + 1 < text.size() && text[i + 1] == L'\n') ++i;
      c = L'\n';
    }
    if (c == L'\n' && !multiline) c = L' ';
    adapted.push_back(c);
  }
  edit(selStart, selEnd, adapted, false);
}

bool EditControl::undo() {
  if (undo_.empty()) return false;
  const State state = undo_.back();
  undo_.pop_back();
  text_ = state.text;
  lastWasTyping_ = false;
  setSelection(state.anchor, state.caret);
  restartCaret();
  if (onChange) onChange();
  return true;
}

void EditControl::copy() {
  if (selStart != selEnd) service()->platform().setClipboardText(selectedText());
}

void EditControl::paste() { replaceSelection(service()->platform().clipboardText()); }

bool EditControl::tabTo(bool backwards) {
  if (!focusList || focusList->size() < 2) return false;
  const std::vector<EditControl*>& list = *focusList;
  const auto self = std::find(list.begin(), list.end(), this);
  if (self == list.end()) return false;
  const std::size_t count = list.size();
  std::size_t index = static_cast<std::size_t>(self - list.begin());
  for (std::size_t step = 1; step < count; ++step) {
    index = backwards ? (index + count - 1) % count : (index + 1) % count;
    EditControl* next = list[index];
    if (next->shown() && next->enabled && next->acceptsFocus) {
      service()->setFocus(next);
      next->selectAll();
      next->restartCaret();
      return true;
    }
  }
  return true;
}

void EditControl::restartCaret() {
  if (service() == nullptr || !focused) return;
  stopBlink();
  caretShown = true;
  blinkTimer_ = service()->platform().startTimer(service()->style().caretBlinkTime, [this] {
    caretShown = !caretShown;
    paint();
  });
  paint();
}

void EditControl::stopBlink() {
  if (blinkTimer_ != 0 && service() != nullptr) service()->platform().stopTimer(blinkTimer_);
  blinkTimer_ = 0;
}

void EditControl::scrollToCaret() {
  if (service() == nullptr) return;
  const Media::TextLayout::Caret at = layout().caretAt(caret, false);
  const float width = static_cast<float>(rect.w) - 2 * kPadding;
  const float height = static_cast<float>(rect.h) - 2 * kPadding;
  if (at.x - scrollX > width - 1.0f) scrollX = at.x - width + 1.0f;
  if (at.x < scrollX) scrollX = at.x;
  if (at.top + at.height - scrollY > height) scrollY = at.top + at.height - height;
  if (at.top < scrollY) scrollY = at.top;
  scrollX = std::max(0.0f, scrollX);
  scrollY = std::max(0.0f, scrollY);
}

void EditControl::leftDown(std::int32_t x, std::int32_t y) {
  Window::WindowMouseService& mouse = *service();
  if (!focused) mouse.setFocus(this);
  pressX_ = x;
  pressY_ = y;
  mouse.beginCapture(*this, x, y, Window::WindowMouseService::kCursorIBeam);
  const std::size_t position = positionAt(static_cast<float>(x), static_cast<float>(y));
  desiredX_ = -1.0f;
  lastWasTyping_ = false;
  if (mouse.doubleClick) {
    // The word under the press, or the run of spaces or signs there.
    std::size_t start = position;
    std::size_t end = position;
    if (position < text_.size() && text_[position] != L'\n') {
      const int kind = characterClass(text_[position]);
      while (start > 0 && characterClass(text_[start - 1]) == kind && text_[start - 1] != L'\n') --start;
      while (end < text_.size() && characterClass(text_[end]) == kind && text_[end] != L'\n') ++end;
    }
    setSelection(start, end);
  } else {
    setSelection((mouse.modifiers() & kShift) != 0 ? anchor : position, position);
  }
  restartCaret();
}

void EditControl::dragMove(std::int32_t dx, std::int32_t dy) {
  setSelection(anchor, positionAt(static_cast<float>(pressX_ + dx), static_cast<float>(pressY_ + dy)));
}

void EditControl::mouseMove(std::int32_t, std::int32_t) { service()->setCursor(Window::WindowMouseService::kCursorIBeam); }

bool EditControl::wheel(std::int32_t, std::int32_t, std::int32_t delta) {
  if (!multiline || delta == 0) return false;
  const float maxScroll = std::max(0.0f, layout().size().height - (static_cast<float>(rect.h) - 2 * kPadding));
  scrollY = std::clamp(scrollY - static_cast<float>(delta) / 120.0f * 3.0f * lineHeight(), 0.0f, maxScroll);
  paint();
  return true;
}

void EditControl::focusLost() {
  stopBlink();
  caretShown = false;
  preedit_.clear();
  paint();
}

void EditControl::contextMenu(std::int32_t x, std::int32_t y) {
  Window::WindowMouseService& mouse = *service();
  const bool selection = selStart != selEnd;
  Window::PopupMenu menu;
  menu.items.emplace_back(L"元に戻す", [this] { undo(); }, !undo_.empty());
  menu.items.push_back(Window::PopupMenuItem::separator());
  menu.items.emplace_back(L"切り取り", [this] { charInput(24); }, selection);
  menu.items.emplace_back(L"コピー", [this] { charInput(3); }, selection);
  menu.items.emplace_back(L"貼り付け", [this] { charInput(22); });
  menu.items.emplace_back(L"削除", [this] { edit(selStart, selEnd, std::wstring(), false); }, selection);
  menu.items.push_back(Window::PopupMenuItem::separator());
  menu.items.emplace_back(L"すべて選択", [this] { selectAll(); }, !text_.empty());
  const Window::WindowGeometry frame = mouse.window().geometry();
  mouse.platform().showPopupMenu(mouse.window(), frame.x + rect.x + x, frame.y + rect.y + y, menu);
}

void EditControl::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  const Media::RectF box = bounds();
  target.fillRect(box, Media::Brush::solid(style.editBackground));
  target.drawRect({0.5f, 0.5f, box.right - 0.5f, box.bottom - 0.5f},
                  Media::Brush::solid(focused ? style.borderFocus : style.border), 1.0f);
  const Media::TextLayout& shown = layout();
  const float left = kPadding - scrollX;
  const float top = kPadding - scrollY;
  // As in most systems, a box without the focus keeps its selection but does not show it.
  if (focused && selStart != selEnd && preedit_.empty()) {
    for (const Media::TextLayout::Line& line : shown.lines()) {
      const std::size_t from = std::max(selStart, line.start);
      const std::size_t to = std::min(selEnd, line.start + line.length);
      if (from >= to) continue;
      const float x0 = shown.caretAt(from, false).x;
      const float x1 = to == line.start + line.length && to < text_.size() ? shown.caretAt(to - 1, true).x + 4.0f
                                                                             : shown.caretAt(to, false).x;
      target.fillRect({left + x0, top + line.top, left + x1, top + line.top + line.height},
                      Media::Brush::solid(style.selection));
    }
  }
  target.drawTextLayout({left, top}, shown, Media::Brush::solid(enabled ? style.text : style.textDisable));
  const Media::TextLayout::Caret at = shown.caretAt(caret, false);
  if (!preedit_.empty()) {
    // The composition stands inline, underlined.
    const Media::TextLayout::Caret end = shown.caretAt(caret + preedit_.size(), false);
    const float y = top + at.top + at.height - 1.0f;
    target.drawLine({left + at.x, y}, {left + end.x, y}, Media::Brush::solid(style.text), 1.0f);
  }
  if (focused && caretShown && preedit_.empty()) {
    target.fillRect({left + at.x, top + at.top, left + at.x + 1.0f, top + at.top + at.height},
                    Media::Brush::solid(style.text));
  }
}

}  // namespace Control
