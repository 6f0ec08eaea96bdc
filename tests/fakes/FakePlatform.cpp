#include "fakes/FakePlatform.h"

#include <algorithm>

namespace TestSupport {

namespace {

FakePlatformServices* activeServices = nullptr;

}  // namespace

FakeWindow::FakeWindow(const Window::WindowOptions& options, Window::WindowEvents& events)
    : options_(options), events_(events), geometry_(options.geometry) {
  target_.resize(geometry_.width, geometry_.height);
}

FakeWindow::~FakeWindow() {
  if (activeServices) activeServices->forget(this);
}

void FakeWindow::show(bool maximized) {
  visible_ = true;
  maximized_ = maximized;
}

void FakeWindow::resizeTo(std::int32_t width, std::int32_t height) {
  geometry_.width = std::max(width, options_.minimumWidth);
  geometry_.height = std::max(height, options_.minimumHeight);
  target_.resize(geometry_.width, geometry_.height);
  events_.resized(geometry_.width, geometry_.height);
  events_.geometryChanged(geometry_, maximized_, false);
}

void FakeWindow::moveTo(std::int32_t x, std::int32_t y) {
  geometry_.x = x;
  geometry_.y = y;
  events_.geometryChanged(geometry_, maximized_, false);
}

void FakeWindow::press(std::int32_t x, std::int32_t y, Window::MouseButton button) {
  events_.mouseMoved(x, y, 0);
  events_.mousePressed(button, x, y, 0);
}

void FakeWindow::release(std::int32_t x, std::int32_t y, Window::MouseButton button) {
  events_.mouseReleased(button, x, y, 0);
}

void FakeWindow::drag(std::int32_t fromX, std::int32_t fromY, std::int32_t toX, std::int32_t toY) {
  press(fromX, fromY);
  move(toX, toY);
  release(toX, toY);
}

FakePlatformServices::FakePlatformServices() { activeServices = this; }

FakePlatformServices::~FakePlatformServices() {
  if (activeServices == this) activeServices = nullptr;
}

std::unique_ptr<Window::PlatformWindow> FakePlatformServices::createWindow(const Window::WindowOptions& options,
                                                                           Window::WindowEvents& events) {
  auto window = std::make_unique<FakeWindow>(options, events);
  windows_.push_back(window.get());
  return window;
}

void FakePlatformServices::forget(FakeWindow* window) { std::erase(windows_, window); }

void FakePlatformServices::showPopupMenu(Window::PlatformWindow&, std::int32_t, std::int32_t,
                                         const Window::PopupMenu& menu) {
  ++menusShown_;
  lastMenu_ = menu;
  const std::wstring choice = std::move(choice_);
  choice_.clear();
  if (choice.empty()) return;
  const Window::PopupMenuItem* item = lastMenu_.find(choice);
  if (item && item->enabled && item->action) item->action();
}

std::uint32_t FakePlatformServices::startTimer(std::int32_t milliseconds, std::function<void()> callback) {
  const std::uint32_t id = ++lastTimer_;
  timers_[id] = {milliseconds, now_ + milliseconds, std::move(callback)};
  return id;
}

void FakePlatformServices::addWaitHandle(int descriptor, std::function<void()> callback) {
  handles_[descriptor] = std::move(callback);
}

void FakePlatformServices::cursorPosition(std::int32_t& x, std::int32_t& y) {
  x = cursorX_;
  y = cursorY_;
}

void FakePlatformServices::setCursorPosition(std::int32_t x, std::int32_t y) {
  cursorX_ = x;
  cursorY_ = y;
}

bool FakePlatformServices::openPath(const std::wstring& path) {
  opened_.push_back(path);
  return true;
}

void FakePlatformServices::runPosted() {
  while (!posted_.empty()) {
    std::function<void()> task = std::move(posted_.front());
    posted_.erase(posted_.begin());
    task();
  }
}

void FakePlatformServices::advance(std::int32_t milliseconds) {
  const std::int64_t end = now_ + milliseconds;
  for (;;) {
    auto next = timers_.end();
    for (auto it = timers_.begin(); it != timers_.end(); ++it) {
      if (it->second.due <= end && (next == timers_.end() || it->second.due < next->second.due)) next = it;
    }
    if (next == timers_.end()) break;
    now_ = next->second.due;
    next->second.due += std::max(next->second.period, 1);
    // The callback may stop its own timer: run a copy.
    const std::function<void()> callback = next->second.callback;
    callback();
  }
  now_ = end;
}

void FakePlatformServices::signal(int descriptor) {
  const auto found = handles_.find(descriptor);
  if (found != handles_.end()) found->second();
}

}  // namespace TestSupport
