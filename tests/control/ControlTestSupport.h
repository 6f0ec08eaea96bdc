// A mouse service over a fake window (400 x 300 at screen point 100, 50) with a manual
// clock shared by the service and the fake timers, and a control that records the calls
// it gets. Text is 10 pixels a character and 20 a line (font size 20).
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "control/WindowControlRenderTarget.h"
#include "control/WindowMouseService.h"
#include "fakes/FakePlatform.h"

namespace TestSupport {

class ControlFixture {
 public:
  explicit ControlFixture(const std::function<void(Window::ControlStyle&)>& adjust = {}) {
    window_ = platform_.createWindow({L"controls", {100, 50, 400, 300}}, sink_);
    style_.font.size = 20.0f;
    if (adjust) adjust(style_);
    service_ = std::make_unique<Window::WindowMouseService>(platform_, *window_, style_, [this] { return clock_; });
  }
  Window::WindowMouseService& service() { return *service_; }
  Window::WindowControl& root() { return service_->root(); }
  FakePlatformServices& platform() { return platform_; }
  FakeWindow& window() { return static_cast<FakeWindow&>(*window_); }
  RecordingRenderTarget& target() { return window().target(); }
  void layout() { service_->setBounds({0, 0, 400, 300}); }

  void press(int x, int y, std::uint32_t modifiers = 0, Window::MouseButton button = Window::MouseButton::Left) {
    service_->mouseMoved(x, y, modifiers);
    service_->mousePressed(button, x, y, modifiers);
  }
  void move(int x, int y, std::uint32_t modifiers = 0) { service_->mouseMoved(x, y, modifiers); }
  void release(int x, int y, std::uint32_t modifiers = 0, Window::MouseButton button = Window::MouseButton::Left) {
    service_->mouseReleased(button, x, y, modifiers);
  }
  void click(int x, int y, std::uint32_t modifiers = 0) {
    press(x, y, modifiers);
    release(x, y, modifiers);
  }
  void key(int vk, std::uint32_t modifiers = 0) { service_->keyPressed(vk, modifiers, false); }
  void type(const std::wstring& text) { service_->textEntered(text); }
  // Moves the clock of the service and of the fake timers together.
  void advance(int milliseconds) {
    clock_ += milliseconds;
    platform_.advance(milliseconds);
  }

 private:
  FakePlatformServices platform_;
  Window::WindowEventsBase sink_;
  std::unique_ptr<Window::PlatformWindow> window_;
  Window::ControlStyle style_;
  std::int64_t clock_ = 1000;
  std::unique_ptr<Window::WindowMouseService> service_;
};

// Records the calls of the mouse service as short words; captures on a left press.
class ProbeControl : public Window::WindowControl {
 public:
  ProbeControl(Window::WindowControl* parent, Window::ControlLayout where, bool capture = true)
      : Window::WindowControl(parent), capture_(capture) {
    layout = where;
  }
  void leftDown(std::int32_t x, std::int32_t y) override {
    log.push_back("down " + std::to_string(x) + "," + std::to_string(y));
    if (capture_) service()->beginCapture(*this, x, y, cursor);
  }
  void leftUp(std::int32_t x, std::int32_t y) override {
    log.push_back("up " + std::to_string(x) + "," + std::to_string(y));
  }
  void rightDown(std::int32_t, std::int32_t) override { log.push_back("rdown"); }
  void dragMove(std::int32_t dx, std::int32_t dy) override {
    log.push_back("drag " + std::to_string(dx) + "," + std::to_string(dy));
  }
  void dragEnd(std::int32_t, std::int32_t) override { log.push_back("dragend"); }
  bool dragKey(std::int32_t key) override {
    log.push_back("dragkey " + std::to_string(key));
    return takeDragKeys;
  }
  bool keyDown(std::int32_t key) override {
    log.push_back("key " + std::to_string(key));
    return takeKeys;
  }
  bool charInput(std::uint32_t code) override {
    log.push_back("char " + std::to_string(code));
    return true;
  }
  void captureLost() override { log.push_back("lost"); }
  void mouseEnter() override { log.push_back("enter"); }
  void mouseLeave() override { log.push_back("leave"); }
  void hover() override { log.push_back("hover"); }
  void focusLost() override { log.push_back("unfocus"); }
  void holdKeyUp() override { log.push_back("holdup"); }
  void contextMenu(std::int32_t, std::int32_t) override { log.push_back("menu"); }
  bool wheel(std::int32_t, std::int32_t, std::int32_t delta) override {
    log.push_back("wheel " + std::to_string(delta));
    return true;
  }
  void cancelModal(bool picked, const Media::ColorF& color) override {
    log.push_back(picked ? "picked " + std::to_string(color.r) : "cancel");
  }

  std::vector<std::string> log;
  Window::WindowMouseService::MouseCursor cursor = Window::WindowMouseService::kCursorArrow;
  bool takeDragKeys = false;
  bool takeKeys = false;

 private:
  bool capture_;
};

}  // namespace TestSupport
