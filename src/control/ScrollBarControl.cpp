#include "control/ScrollBarControl.h"

#include <algorithm>
#include <cmath>

#include "control/WindowMouseService.h"

namespace Control {

ScrollBarControl::BarMouse::BarMouse(ScrollBarControl& bar) : Window::WindowControlRenderTarget(&bar), bar_(bar) {}

void ScrollBarControl::BarMouse::leftDown(std::int32_t x, std::int32_t y) {
  startPos_ = bar_.pos;
  service()->beginCapture(*this, x, y, service()->currentCursor);
  bar_.paint();
}

void ScrollBarControl::BarMouse::dragMove(std::int32_t dx, std::int32_t dy) {
  const std::int32_t track = bar_.length() - 2 * bar_.arrowSize();
  if (track <= 0) return;
  const double units = static_cast<double>(bar_.vertical_ ? dy : dx) * (bar_.range() + 1) / track;
  const std::int32_t page = bar_.page();
  const std::int32_t a = startPos_ + static_cast<std::int32_t>(std::lround(units));
  const std::int32_t clamped = std::clamp(a, bar_.min, std::max(bar_.min, bar_.max - page + 1));
  bar_.setPosition(clamped, clamped + page - 1);
}

void ScrollBarControl::BarMouse::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  const Media::RectF box = bounds();
  const Media::ColorF color = pressed ? style.borderFocus : (hovered ? style.text : style.scrollThumb);
  target.fillRoundedRect(box, bar_.thumbRadius(), Media::Brush::solid(color));
}

ScrollBarControl::ScrollBarControl(Window::WindowControl* parent, bool vertical)
    : Window::WindowControlRenderTarget(parent), vertical_(vertical), back_(this), forward_(this), thumb_(*this) {
  acceptsWheel = true;
  back_.text = vertical ? L"▴" : L"◂";
  forward_.text = vertical ? L"▾" : L"▸";
  back_.onClick = [this] { scrollBy(-1); };
  forward_.onClick = [this] { scrollBy(1); };
}

void ScrollBarControl::setRange(std::int32_t minimum, std::int32_t maximum) {
  min = minimum;
  max = std::max(minimum, maximum);
  setPosition(pos, posEnd);
}

void ScrollBarControl::setPosition(std::int32_t a, std::int32_t b) {
  const std::int32_t oldPos = pos;
  const std::int32_t oldEnd = posEnd;
  pos = std::clamp(a, min, max);
  posEnd = std::clamp(b, pos, max);
  recompute();
  layoutChildren();
  paint();
  if ((pos != oldPos || posEnd != oldEnd) && onScroll) onScroll();
}

void ScrollBarControl::setCentre(double f) {
  const std::int32_t size = page();
  if (range() + 1 <= size) return;
  const std::int32_t a = min + static_cast<std::int32_t>(std::lround((range() + 1) * f - size / 2.0));
  const std::int32_t clamped = std::clamp(a, min, max - size + 1);
  setPosition(clamped, clamped + size - 1);
}

void ScrollBarControl::scrollBy(std::int32_t units) {
  const std::int32_t size = page();
  const std::int32_t a = std::clamp(pos + units, min, std::max(min, max - size + 1));
  setPosition(a, a + size - 1);
}

void ScrollBarControl::recompute() {
  const double span = static_cast<double>(max - min + 1);
  startFraction = pos / span;
  endFraction = (posEnd + 1) / span;
}

std::int32_t ScrollBarControl::arrowSize() const noexcept {
  return std::max(0, std::min(thickness(), length() / 2 - 3));
}

std::int32_t ScrollBarControl::thumbStart() const noexcept {
  const std::int32_t arrow = arrowSize();
  const std::int32_t track = length() - 2 * arrow;
  return arrow + static_cast<std::int32_t>(track * (startFraction - static_cast<double>(min) / (range() + 1)));
}

std::int32_t ScrollBarControl::thumbEnd() const noexcept {
  const std::int32_t arrow = arrowSize();
  const std::int32_t track = length() - 2 * arrow;
  return arrow + static_cast<std::int32_t>(track * (endFraction - static_cast<double>(min) / (range() + 1)));
}

float ScrollBarControl::thumbRadius() const noexcept {
  return std::max(static_cast<float>(thickness()) * 0.2f, 0.5f);
}

void ScrollBarControl::layoutChildren() {
  const std::int32_t arrow = arrowSize();
  const std::int32_t start = thumbStart();
  const std::int32_t end = std::max(start + 1, thumbEnd());
  if (vertical_) {
    back_.setLayout(0, 0, 0, arrow);
    forward_.setLayout(0, -arrow, 0, arrow);
    thumb_.setLayout(0, start, 0, end - start);
  } else {
    back_.setLayout(0, 0, arrow, 0);
    forward_.setLayout(-arrow, 0, arrow, 0);
    thumb_.setLayout(start, 0, end - start, 0);
  }
  back_.visible = forward_.visible = arrow > 0;
  Window::WindowControl::layoutChildren();
}

void ScrollBarControl::leftDown(std::int32_t x, std::int32_t y) {
  // The track: a page towards the press.
  const std::int32_t at = vertical_ ? y : x;
  scrollBy(at < thumbStart() ? -page() : page());
}

bool ScrollBarControl::wheel(std::int32_t, std::int32_t, std::int32_t delta) {
  if (delta == 0) return false;
  scrollBy(delta > 0 ? -1 : 1);
  return true;
}

void ScrollBarControl::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  target.fillRect(bounds(), Media::Brush::solid(style.editBackground));
}

}  // namespace Control
