#include "control/SliderInputControl.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "control/WindowMouseService.h"

namespace Control {

using Window::WindowMouseService;

bool SliderInputControl::SliderButton::directMode() const {
  const std::uint32_t modifiers = service()->modifiers();
  if (service()->style().sliderDirectMove == 0) return (modifiers & Window::kModifierAlt) != 0;
  return (modifiers & Window::kModifierShift) == 0;
}

bool SliderInputControl::SliderButton::fineMode() const {
  return (service()->modifiers() & Window::kModifierShift) != 0;
}

void SliderInputControl::SliderButton::leftDown(std::int32_t x, std::int32_t y) {
  WindowMouseService& mouse = *service();
  owner_.begin();
  mouse.beginCapture(*this, x, y,
                     mouse.style().slideMouseHidden ? WindowMouseService::kCursorNone : WindowMouseService::kCursorSlide);
  direct_ = directMode();
  fine_ = fineMode();
  startRaw_ = owner_.raw;
  startDx_ = 0;
  pressX_ = x;
  if (direct_) {
    const std::int64_t span = owner_.rawMax - owner_.rawMin;
    owner_.setRaw(owner_.rawMin + static_cast<std::int64_t>(x) * span / std::max(rect.w, 1));
  }
}

void SliderInputControl::SliderButton::dragMove(std::int32_t dx, std::int32_t) {
  const bool direct = directMode();
  const bool fine = fineMode();
  if (direct != direct_ || fine != fine_) {
    // A new mode starts from where the value stands, so it does not jump.
    direct_ = direct;
    fine_ = fine;
    startRaw_ = owner_.raw;
    startDx_ = dx;
  }
  const std::int64_t moved = dx - startDx_;
  std::int64_t next = 0;
  if (direct_) {
    const std::int64_t span = owner_.rawMax - owner_.rawMin;
    next = owner_.rawMin + static_cast<std::int64_t>(pressX_ + dx) * span / std::max(rect.w, 1);
  } else if (fine_) {
    next = startRaw_ + moved * owner_.stepFine;
  } else {
    const auto d = static_cast<std::int64_t>(std::llround(static_cast<double>(moved) * owner_.speed));
    next = startRaw_ - d % owner_.stepCoarse + d;
  }
  owner_.setRaw(next);
}

bool SliderInputControl::SliderButton::dragKey(std::int32_t key) {
  if (key != 37 && key != 39) return false;
  const std::int64_t step = key == 37 ? -1 : 1;
  startRaw_ += step;
  owner_.setRaw(owner_.raw + step);
  return true;
}

void SliderInputControl::SliderButton::leftUp(std::int32_t, std::int32_t) {
  WindowMouseService& mouse = *service();
  if (mouse.moved) return;
  // A direct press has already jumped; only its double click opens the box.
  if (direct_ && !mouse.doubleClick) return;
  owner_.openEdit();
}

void SliderInputControl::SliderButton::captureLost() {
  if (!owner_.editing()) owner_.end();
  paint();
}

void SliderInputControl::SliderButton::mouseMove(std::int32_t, std::int32_t) {
  if (service()->style().sliderDirectMove == 0) service()->setCursor(WindowMouseService::kCursorSlider);
}

void SliderInputControl::SliderButton::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  const Media::RectF box = bounds();
  target.fillRect(box, Media::Brush::solid(pressed ? style.buttonBodyPress
                                                   : (hovered ? style.buttonBodyHover : style.buttonBody)));
  if (!style.sliderCursorHidden && owner_.rawMax > owner_.rawMin) {
    const double fraction =
        static_cast<double>(owner_.raw - owner_.rawMin) / static_cast<double>(owner_.rawMax - owner_.rawMin);
    const float x = std::floor(static_cast<float>(fraction * rect.w));
    target.fillRect({x - 1.0f, 0.0f, x + 1.0f, box.bottom}, Media::Brush::solid(style.sliderCursor));
  }
  const Media::Brush marks = Media::Brush::solid(style.text);
  if (owner_.firstSection) {
    target.fillRect({0.0f, 0.0f, 2.0f, box.bottom}, marks);
    target.fillRect({3.0f, 0.0f, 4.0f, box.bottom}, marks);
  }
  if (owner_.lastSection) {
    target.fillRect({box.right - 2.0f, 0.0f, box.right, box.bottom}, marks);
    target.fillRect({box.right - 4.0f, 0.0f, box.right - 3.0f, box.bottom}, marks);
  }
  target.drawText(owner_.text(), style.font, box, Media::Brush::solid(enabled ? style.text : style.textDisable),
                  Media::TextAlignment::Center);
}

SliderInputControl::SliderEdit::SliderEdit(SliderInputControl& owner) : EditControl(&owner), owner_(owner) {
  numeric = true;
  visible = false;
  onChange = [this] {
    if (!visible) return;
    if (const std::optional<std::int64_t> typed = owner_.parse(text())) {
      owner_.begin();
      owner_.setRaw(*typed);
    }
  };
}

bool SliderInputControl::SliderEdit::keyDown(std::int32_t key) {
  if (key == 13 || key == 27) {
    // Leaving the box closes it; the value already follows the typing.
    service()->setFocus(nullptr);
    return true;
  }
  return EditControl::keyDown(key);
}

void SliderInputControl::SliderEdit::focusLost() {
  EditControl::focusLost();
  visible = false;
  owner_.button_.visible = true;
  owner_.end();
  owner_.paint();
}

bool SliderInputControl::SliderEdit::wheel(std::int32_t, std::int32_t, std::int32_t delta) {
  if (delta == 0) return false;
  const std::optional<std::int64_t> typed = owner_.parse(text());
  if (!typed) return true;
  const std::int64_t next = std::clamp(*typed + (delta > 0 ? -1 : 1), owner_.rawMin, owner_.rawMax);
  const std::wstring shown = owner_.format(next);
  setText(shown);
  selectAll();
  owner_.begin();
  owner_.setRaw(next);
  return true;
}

SliderInputControl::SliderInputControl(Window::WindowControl* parent)
    : Window::WindowControlRenderTarget(parent), minus_(this), plus_(this), button_(*this), edit_(*this) {
  minus_.text = L"-";
  plus_.text = L"+";
  const auto stepper = [this](std::int64_t step) {
    return [this, step] {
      begin();
      setRaw(raw + step);
      end();
    };
  };
  minus_.onClick = stepper(-1);
  plus_.onClick = stepper(1);
}

double SliderInputControl::toRawScale(double v) const { return toSlider_ ? toSlider_(v) : v; }

void SliderInputControl::setCurve(std::function<double(double)> toSlider, std::function<double(double)> fromSlider) {
  toSlider_ = std::move(toSlider);
  fromSlider_ = std::move(fromSlider);
}

void SliderInputControl::setRange(double minimum, double maximum, double v, double step) {
  if (!(step > 0.0)) step = 1.0;
  scale = std::max<std::int64_t>(1, static_cast<std::int64_t>(std::llround(1.0 / step)));
  decimals = static_cast<std::int32_t>(std::trunc(std::log10(static_cast<double>(scale)) + 1e-9));
  rawMin = static_cast<std::int64_t>(std::llround(toRawScale(minimum) / step));
  rawMax = std::max(rawMin, static_cast<std::int64_t>(std::llround(toRawScale(maximum) / step)));
  raw = std::clamp(static_cast<std::int64_t>(std::llround(toRawScale(v) / step)), rawMin, rawMax);
  computeSpeed();
  paint();
}

void SliderInputControl::computeSpeed() {
  const Window::ControlStyle& style = service()->style();
  const double range = static_cast<double>(rawMax - rawMin);
  double base = 0.0;
  if (style.sliderMoveMode == 0) {
    base = static_cast<double>(scale);
  } else if (style.sliderMoveMode == 1) {
    base = range / std::max(style.screenWidth, 1);
  } else {
    base = range / std::max(button_.rect.w, 1);
  }
  double r = std::min(base, static_cast<double>(scale) * 10.0);
  r = std::max(r * style.sliderMoveRatio / 100.0, 0.05);
  speed = r;
  const auto reduce = [](std::int64_t step) { return step % 2 == 0 ? step / 2 : 2 * step / 5; };
  stepCoarse = scale;
  while (static_cast<double>(stepCoarse) > r && stepCoarse >= 2) stepCoarse = reduce(stepCoarse);
  stepFine = scale;
  while (10.0 * static_cast<double>(stepFine) > r && stepFine >= 2) stepFine = reduce(stepFine);
}

void SliderInputControl::setRaw(std::int64_t next) {
  next = std::clamp(next, rawMin, rawMax);
  if (next == raw) return;
  raw = next;
  button_.paint();
  if (onChange) onChange();
}

double SliderInputControl::value() const {
  const double linear = static_cast<double>(raw) / static_cast<double>(scale);
  return fromSlider_ ? fromSlider_(linear) : linear;
}

std::wstring SliderInputControl::format(std::int64_t v) const {
  if (v == 0 && !zeroText.empty()) return zeroText;
  std::wstring digits = std::to_wstring(v < 0 ? -v : v);
  const std::size_t wanted = static_cast<std::size_t>(decimals) + 1;
  if (digits.size() < wanted) digits.insert(0, wanted - digits.size(), L'0');
  if (decimals > 0) digits.insert(digits.size() - static_cast<std::size_t>(decimals), 1, L'.');
  if (v < 0) digits.insert(0, 1, L'-');
  return digits;
}

std::optional<std::int64_t> SliderInputControl::parse(const std::wstring& typed) const {
  std::string narrow;
  for (wchar_t c : typed) {
    if (c == L' ') continue;
    if (c > 127) return std::nullopt;
    narrow.push_back(static_cast<char>(c));
  }
  if (!narrow.empty() && narrow.front() == '+') narrow.erase(0, 1);
  double number = 0.0;
  const auto [end, error] = std::from_chars(narrow.data(), narrow.data() + narrow.size(), number);
  if (error != std::errc() || end != narrow.data() + narrow.size() || narrow.empty()) return std::nullopt;
  return static_cast<std::int64_t>(std::llround(toRawScale(number) * static_cast<double>(scale)));
}

void SliderInputControl::openEdit() {
  button_.visible = false;
  edit_.visible = true;
  edit_.setText(text());
  edit_.selectAll();
  service()->setFocus(&edit_);
  edit_.restartCaret();
  edit_.paint();
}

void SliderInputControl::begin() {
  if (pending_) return;
  pending_ = true;
  if (onBegin) onBegin();
}

void SliderInputControl::end() {
  if (!pending_) return;
  pending_ = false;
  if (onEnd) onEnd();
}

void SliderInputControl::layoutChildren() {
  const bool buttons = !service()->style().sliderButtonHidden;
  const std::int32_t side = buttons ? rect.h : 0;
  minus_.visible = plus_.visible = buttons;
  minus_.setLayout(0, 0, std::max(side, 1), 0);
  plus_.setLayout(-side, 0, std::max(side, 1), 0);
  button_.setLayout(side, 0, -side, 0);
  edit_.setLayout(side, 0, -side, 0);
  Window::WindowControl::layoutChildren();
  if (service()->style().sliderMoveMode != 0 && service()->style().sliderMoveMode != 1) computeSpeed();
}

void SliderInputControl::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  target.fillRect(bounds(), Media::Brush::solid(style.background));
}

}  // namespace Control
