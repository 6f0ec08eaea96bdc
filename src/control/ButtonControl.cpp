#include "control/ButtonControl.h"

#include "control/ToolTips.h"
#include "control/WindowMouseService.h"

namespace Control {

void ButtonControl::leftDown(std::int32_t x, std::int32_t y) {
  service()->beginCapture(*this, x, y, service()->currentCursor);
  paint();
}

void ButtonControl::leftUp(std::int32_t x, std::int32_t y) {
  if (x >= 0 && y >= 0 && x < rect.w && y < rect.h) click();
}

void ButtonControl::click() {
  if (onClick) onClick();
}

void ButtonControl::mouseLeave() {
  Window::ToolTips::hideShown();
  paint();
}

void ButtonControl::hover() {
  Window::ToolTips* tips = Window::ToolTips::current();
  if (toolTip.empty() || tips == nullptr) return;
  const Window::WindowGeometry frame = service()->window().geometry();
  tips->show(frame.x + rect.x, frame.y + rect.y + rect.h + 2, toolTip, 0);
}

Media::ColorF ButtonControl::bodyColor(const Window::ControlStyle& style) const {
  if (!enabled) return style.buttonBodyDisable;
  if (pressed) return style.buttonBodyPress;
  if (selected) return style.buttonBodySelect;
  if (hovered) return style.buttonBodyHover;
  return style.buttonBody;
}

void ButtonControl::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  const Media::RectF box = bounds();
  target.fillRect(box, Media::Brush::solid(bodyColor(style)));
  target.drawRect({0.5f, 0.5f, box.right - 0.5f, box.bottom - 0.5f}, Media::Brush::solid(style.border), 1.0f);
  drawContent(target, style);
}

RepeatClickButtonControl::~RepeatClickButtonControl() { stopRepeat(); }

void RepeatClickButtonControl::leftDown(std::int32_t x, std::int32_t y) {
  TextButtonControl::leftDown(x, y);
  click();
  stopRepeat();
  first_ = true;
  Window::WindowMouseService* mouse = service();
  timer_ = mouse->platform().startTimer(mouse->style().repeatDelay, [this] {
    if (first_) {
      // The delay is over: go on at the repeat period.
      first_ = false;
      Window::WindowMouseService* owner = service();
      owner->platform().stopTimer(timer_);
      timer_ = owner->platform().startTimer(owner->style().repeatPeriod, [this] { click(); });
    }
    click();
  });
}

void RepeatClickButtonControl::captureLost() {
  stopRepeat();
  TextButtonControl::captureLost();
}

void RepeatClickButtonControl::stopRepeat() {
  if (timer_ != 0 && service() != nullptr) service()->platform().stopTimer(timer_);
  timer_ = 0;
}

void TextButtonControl::drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) {
  if (text.empty()) return;
  // Centred text may use the whole body, so a small button still holds its sign.
  const Media::RectF box = bounds();
  const float inset = centred ? 0.0f : 4.0f;
  target.drawText(text, style.font, {inset, 0.0f, box.right - inset, box.bottom}, Media::Brush::solid(textColor(style)),
                  centred ? Media::TextAlignment::Center : Media::TextAlignment::Leading);
}

void CheckButtonControl::click() {
  selected = !selected;
  paint();
  if (onChange) onChange(selected);
  ButtonControl::click();
}

void CheckButtonControl::drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) {
  if (selected || textOff.empty()) {
    TextButtonControl::drawContent(target, style);
    return;
  }
  const std::wstring on = text;
  text = textOff;
  TextButtonControl::drawContent(target, style);
  text = on;
}

bool TextButtonWheelControl::wheel(std::int32_t, std::int32_t, std::int32_t delta) {
  if (delta == 0 || !onStep) return false;
  onStep(delta > 0 ? -1 : 1);
  return true;
}

void TextClearButtonControl::leftUp(std::int32_t x, std::int32_t y) {
  if (x >= rect.w - clearWidth() && x < rect.w && y >= 0 && y < rect.h) {
    text.clear();
    paint();
    if (onClear) onClear();
    return;
  }
  TextButtonControl::leftUp(x, y);
}

void TextClearButtonControl::drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) {
  const Media::RectF box = bounds();
  target.drawText(text, style.font, {4.0f, 0.0f, box.right - static_cast<float>(clearWidth()), box.bottom},
                  Media::Brush::solid(textColor(style)), Media::TextAlignment::Leading);
  target.drawText(L"x", style.font, {box.right - static_cast<float>(clearWidth()), 0.0f, box.right, box.bottom},
                  Media::Brush::solid(textColor(style)), Media::TextAlignment::Center);
}

void TextControl::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  target.drawText(text, style.font, bounds(), Media::Brush::solid(style.text), alignment);
}

}  // namespace Control
