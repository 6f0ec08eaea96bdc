#include "control/ToolTips.h"

#include <algorithm>

#include "system/Exception.h"

namespace Window {

namespace {
ToolTips* currentToolTips = nullptr;
}

ToolTips::ToolTips(PlatformServices& platform, std::function<std::unique_ptr<ToolTipWindow>()> makeWindow,
                   std::function<std::wstring(const std::wstring&)> translate)
    : platform_(platform), makeWindow_(std::move(makeWindow)), translate_(std::move(translate)) {
  currentToolTips = this;
}

ToolTips::~ToolTips() {
  stopTimer();
  if (currentToolTips == this) currentToolTips = nullptr;
}

ToolTips* ToolTips::current() noexcept { return currentToolTips; }

void ToolTips::hideShown() {
  if (currentToolTips != nullptr && currentToolTips->shown_) currentToolTips->hide();
}

void ToolTips::show(std::int32_t x, std::int32_t y, const std::wstring& text, std::int32_t timeOut) {
  if (!window_) {
    if (makeWindow_) window_ = makeWindow_();
    if (!window_) throw System::PlatformCallException("QWidget", "Window::ToolTips::initialize");
  }
  if (timeOut != 0) {
    timeOut_ = timeOut;
    if (timeOut > 0) {
      stopTimer();
      timer_ = platform_.startTimer(timeOut, [this] {
        stopTimer();
        hide();
      });
    }
  } else {
    stopTimer();
  }
  std::wstring shownText = translate_ ? translate_(text) : text;
  if (shownText.size() > kMaxText) shownText.resize(kMaxText);
  if (shownText != text_) {
    text_ = shownText;
    window_->setText(text_);
  }
  const WindowGeometry size = window_->measure();
  const WindowGeometry screen = platform_.screenArea(x, y);
  x = std::max(screen.x, std::min(x, screen.x + screen.width - size.width));
  window_->moveTo(x, y);
  window_->setShown(true);
  shown_ = true;
}

void ToolTips::hide() {
  if (window_ && shown_) window_->setShown(false);
  shown_ = false;
}

void ToolTips::stopTimer() {
  if (timer_ != 0) platform_.stopTimer(timer_);
  timer_ = 0;
}

}  // namespace Window
