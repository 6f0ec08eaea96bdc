#include "control/TrackBarControl.h"

#include <algorithm>

#include "control/WindowMouseService.h"

namespace Control {

void TrackBarControl::BarMouse::leftDown(std::int32_t x, std::int32_t y) {
  pressX_ = x;
  service()->setFocus(&bar_);
  service()->beginCapture(*this, x, y, service()->currentCursor);
  bar_.setValue(bar_.valueAt(x));
}

void TrackBarControl::BarMouse::dragMove(std::int32_t dx, std::int32_t) { bar_.setValue(bar_.valueAt(pressX_ + dx)); }

bool TrackBarControl::BarMouse::dragKey(std::int32_t key) {
  if (key != 37 && key != 39) return false;
  bar_.setValue(bar_.value + (key == 37 ? -1 : 1));
  return true;
}

TrackBarControl::TrackBarControl(Window::WindowControl* parent)
    : Window::WindowControlRenderTarget(parent), mouse_(*this) {
  acceptsWheel = true;
  acceptsFocus = true;
}

void TrackBarControl::setRange(std::int32_t minimum, std::int32_t maximum) {
  min = minimum;
  max = std::max(minimum, maximum);
  value = std::clamp(value, min, max);
  paint();
}

void TrackBarControl::setValue(std::int32_t newValue) {
  newValue = std::clamp(newValue, min, max);
  if (newValue == value) return;
  value = newValue;
  paint();
  if (onChange) onChange(value);
}

void TrackBarControl::setMarks(float first, float second) {
  mark[0] = first;
  mark[1] = second;
  paint();
}

std::int32_t TrackBarControl::valueAt(std::int32_t x) const noexcept {
  // The thumb's centre travels from half a thumb in to half a thumb before the end.
  const std::int32_t track = std::max(1, rect.w - kThumbWidth);
  const std::int64_t offset = std::clamp(x - kThumbWidth / 2, 0, track);
  return min + static_cast<std::int32_t>((offset * (static_cast<std::int64_t>(max) - min) + track / 2) / track);
}

std::int32_t TrackBarControl::thumbX() const noexcept {
  const std::int32_t track = std::max(1, rect.w - kThumbWidth);
  if (max == min) return 0;
  return static_cast<std::int32_t>(static_cast<std::int64_t>(value - min) * track / (max - min));
}

bool TrackBarControl::wheel(std::int32_t, std::int32_t, std::int32_t delta) {
  if (delta == 0) return false;
  setValue(value + (delta > 0 ? 1 : -1));
  return true;
}

bool TrackBarControl::keyDown(std::int32_t key) {
  if (key == 37 || key == 40) {
    setValue(value - 1);
  } else if (key == 39 || key == 38) {
    setValue(value + 1);
  } else if (key == 36) {
    setValue(min);
  } else if (key == 35) {
    setValue(max);
  } else {
    return false;
  }
  return true;
}

void TrackBarControl::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  const Media::RectF box = bounds();
  target.fillRect(box, Media::Brush::solid(style.background));
  const float middle = static_cast<float>(rect.h / 2);
  const float half = static_cast<float>(kThumbWidth) / 2.0f;
  target.fillRect({half, middle - 1.0f, box.right - half, middle + 1.0f}, Media::Brush::solid(style.buttonBody));
  for (float fraction : mark) {
    if (fraction < 0.0f) continue;
    const float x = half + (box.right - 2.0f * half) * fraction;
    target.fillRect({x, 0.0f, x + 1.0f, box.bottom}, Media::Brush::solid(style.sliderCursor));
  }
  const float x = static_cast<float>(thumbX());
  const Media::ColorF thumb = mouse_.pressed ? style.borderFocus : (mouse_.hovered ? style.text : style.scrollThumb);
  target.fillRoundedRect({x, 2.0f, x + static_cast<float>(kThumbWidth), box.bottom - 2.0f}, 2.0f,
                         Media::Brush::solid(thumb));
}

}  // namespace Control
