// The buttons of the toolkit. A button captures the press and fires when the mouse is
// released inside it; a disabled button is never hit, so it fires nothing. The body
// colour follows the flags: disabled, pressed, selected, hovered, else plain.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "control/WindowControlRenderTarget.h"

namespace Control {

class ButtonControl : public Window::WindowControlRenderTarget {
 public:
  using Window::WindowControlRenderTarget::WindowControlRenderTarget;

  std::function<void()> onClick;
  bool selected = false;
  // Shown from `hover`, hidden again when the mouse leaves; empty for none.
  std::wstring toolTip;

  void leftDown(std::int32_t x, std::int32_t y) override;
  void leftUp(std::int32_t x, std::int32_t y) override;
  void captureLost() override { paint(); }
  void mouseEnter() override { paint(); }
  void mouseLeave() override;
  void hover() override;

 protected:
  virtual void click();
  void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;
  // What stands on the body: text, bitmap, icon.
  virtual void drawContent(Media::RenderTarget&, const Window::ControlStyle&) {}
  Media::ColorF bodyColor(const Window::ControlStyle& style) const;
  Media::ColorF textColor(const Window::ControlStyle& style) const {
    return enabled ? style.text : style.textDisable;
  }
};

class TextButtonControl : public ButtonControl {
 public:
  using ButtonControl::ButtonControl;
  std::wstring text;
  bool centred = true;

 protected:
  void drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) override;
};

// A press fires at once, then again after the key repeat delay and at the repeat
// period until the release.
class RepeatClickButtonControl : public TextButtonControl {
 public:
  using TextButtonControl::TextButtonControl;
  ~RepeatClickButtonControl() override;

  void leftDown(std::int32_t x, std::int32_t y) override;
  void leftUp(std::int32_t, std::int32_t) override {}
  void captureLost() override;

 private:
  void stopRepeat();
  std::uint32_t timer_ = 0;
  bool first_ = true;
};

// Toggles `selected` and fires with the new state; the text may differ for on and off.
class CheckButtonControl : public TextButtonControl {
 public:
  using TextButtonControl::TextButtonControl;
  std::function<void(bool)> onChange;
  std::wstring textOff;  // shown while off when not empty

 protected:
  void click() override;
  void drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) override;
};
using CheckTextButtonControl = CheckButtonControl;

// A value button: the wheel steps it, a notch up -1.
class TextButtonWheelControl : public TextButtonControl {
 public:
  explicit TextButtonWheelControl(Window::WindowControl* parent) : TextButtonControl(parent) { acceptsWheel = true; }
  std::function<void(std::int32_t step)> onStep;
  bool wheel(std::int32_t, std::int32_t, std::int32_t delta) override;
};

// A text with a small "x" area at its right end that clears it.
class TextClearButtonControl : public TextButtonControl {
 public:
  using TextButtonControl::TextButtonControl;
  std::function<void()> onClear;
  void leftUp(std::int32_t x, std::int32_t y) override;

 protected:
  void drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) override;
  std::int32_t clearWidth() const noexcept { return rect.h; }
};

// Static text and a filled rectangle: drawn, never hit.
class TextControl : public Window::WindowControlRenderTarget {
 public:
  explicit TextControl(Window::WindowControl* parent) : Window::WindowControlRenderTarget(parent) { enabled = false; }
  std::wstring text;
  Media::TextAlignment alignment = Media::TextAlignment::Leading;

 protected:
  void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;
};

class RectControl : public Window::WindowControlRenderTarget {
 public:
  explicit RectControl(Window::WindowControl* parent) : Window::WindowControlRenderTarget(parent) { enabled = false; }
  Media::ColorF color;

 protected:
  void draw(Media::RenderTarget& target, const Window::ControlStyle&) override {
    target.fillRect(bounds(), Media::Brush::solid(color));
  }
};

}  // namespace Control
