// The text box: one line or many, with caret, selection, the clipboard, undo of typing
// and the input method's composition drawn inline. Positions count the units of the
// string; the caret never rests between the halves of a surrogate pair. The owner may
// take keys first, filter typed characters and hear every change. Main thread only.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "control/WindowControlRenderTarget.h"

namespace Control {

class EditControl : public Window::WindowControlRenderTarget {
 public:
  static constexpr float kPadding = 3.0f;

  EditControl(Window::WindowControl* parent, bool multiline = false);
  ~EditControl() override;

  const std::wstring& text() const noexcept { return text_; }
  // Replaces the whole text; the caret goes to its end and undo starts afresh.
  void setText(const std::wstring& text);
  // The selection from `anchor` to `caret`, in either order.
  void setSelection(std::size_t anchor, std::size_t caret);
  void selectAll() { setSelection(0, text_.size()); }
  std::wstring selectedText() const { return text_.substr(selStart, selEnd - selStart); }
  // Types `text` over the selection, as a paste would (no filter, new lines adapted).
  void replaceSelection(const std::wstring& text);
  bool undo();
  // The caret blinks again from its visible phase and the text scrolls to it.
  void restartCaret();

  // Characters each checked alone; those it does not match are dropped.
  void setFilter(const std::wstring& pattern) { filter_.emplace(pattern); }
  // An edit that leaves a text this does not match is refused.
  void setWholeTextPattern(const std::wstring& pattern) { whole_.emplace(pattern); }
  // Numeric boxes take no input method.
  bool numeric = false;
  bool multiline;
  // The owner sees keys first; true when it took one.
  std::function<bool(std::int32_t key)> keyHandler;
  std::function<void()> onChange;
  // Boxes that Tab walks through, this one among them.
  std::shared_ptr<std::vector<EditControl*>> focusList;

  // The composition of the input method, shown at the caret until committed.
  void setPreedit(const std::wstring& text);
  const std::wstring& preedit() const noexcept { return preedit_; }
  // Where the input method's window goes: the caret, in window pixels.
  Media::RectF caretRect();

  std::size_t selStart = 0;
  std::size_t selEnd = 0;
  std::size_t caret = 0;
  std::size_t anchor = 0;
  float scrollX = 0.0f;
  float scrollY = 0.0f;
  bool caretShown = false;

  bool keyDown(std::int32_t key) override;
  bool charInput(std::uint32_t code) override;
  void imeResult(const std::wstring& text) override;
  bool imeStart() override { return !numeric; }
  void imePreedit(const std::wstring& text) override {
    if (!numeric) setPreedit(text);
  }
  bool imeCursor(Media::RectF& caret) override;
  void leftDown(std::int32_t x, std::int32_t y) override;
  void dragMove(std::int32_t dx, std::int32_t dy) override;
  void mouseMove(std::int32_t, std::int32_t) override;
  bool wheel(std::int32_t x, std::int32_t y, std::int32_t delta) override;
  void focusLost() override;
  void contextMenu(std::int32_t x, std::int32_t y) override;

  // Positions one step away: over a character, a word or a line.
  std::size_t nextCharacter(std::size_t position) const noexcept;
  std::size_t previousCharacter(std::size_t position) const noexcept;
  std::size_t nextWord(std::size_t position) const noexcept;
  std::size_t previousWord(std::size_t position) const noexcept;
  // The text position under a control point.
  std::size_t positionAt(float x, float y);

 protected:
  void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;

 private:
  struct State {
    std::wstring text;
    std::size_t anchor = 0;
    std::size_t caret = 0;
  };

  const Media::TextLayout& layout();
  float lineHeight();
  void moveCaret(std::size_t position, bool extend);
  void moveLines(std::int32_t lines, bool extend);
  void lineBounds(std::size_t position, std::size_t& start, std::size_t& end);
  // Applies an edit; false when the whole-text pattern refused it.
  bool edit(std::size_t from, std::size_t to, const std::wstring& with, bool typing);
  void copy();
  void paste();
  void deleteRange(bool forward, bool word);
  void scrollToCaret();
  bool tabTo(bool backwards);
  void stopBlink();

  std::wstring text_;
  std::wstring preedit_;
  std::unique_ptr<Media::TextLayout> layout_;
  std::wstring layoutText_;
  std::optional<std::wregex> filter_;
  std::optional<std::wregex> whole_;
  std::vector<State> undo_;
  bool lastWasTyping_ = false;
  float desiredX_ = -1.0f;  // the x kept by moves up and down
  std::int32_t pressX_ = 0;
  std::int32_t pressY_ = 0;
  std::uint32_t blinkTimer_ = 0;
};

}  // namespace Control
