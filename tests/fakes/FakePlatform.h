// A platform for tests of windows and their contents: windows that record what the
// logic asks of them and can be sent events, services with a queue of posted work, a
// manual clock for timers, wait handles signalled by hand and a scripted popup menu.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fakes/RecordingRenderTarget.h"
#include "window/PlatformServices.h"

namespace TestSupport {

class FakeWindow : public Window::PlatformWindow {
 public:
  FakeWindow(const Window::WindowOptions& options, Window::WindowEvents& events);
  ~FakeWindow() override;

  Media::RenderTarget& renderTarget() override { return target_; }
  std::int32_t clientWidth() const override { return geometry_.width; }
  std::int32_t clientHeight() const override { return geometry_.height; }
  void setTitle(const std::wstring& title) override { options_.title = title; }
  void show(bool maximized) override;
  void hide() override { visible_ = false; }
  bool isVisible() const override { return visible_; }
  void raise() override {}
  Window::WindowGeometry geometry() const override { return geometry_; }
  bool isMaximized() const override { return maximized_; }
  void setCursor(Window::CursorShape shape) override { cursor_ = shape; }
  void captureMouse(bool on) override { captured_ = on; }

  // What the user or the window manager does.
  void resizeTo(std::int32_t width, std::int32_t height);
  void moveTo(std::int32_t x, std::int32_t y);
  void close() { events_.closeRequested(); }
  void press(std::int32_t x, std::int32_t y, Window::MouseButton button = Window::MouseButton::Left);
  void move(std::int32_t x, std::int32_t y) { events_.mouseMoved(x, y, 0); }
  void release(std::int32_t x, std::int32_t y, Window::MouseButton button = Window::MouseButton::Left);
  void drag(std::int32_t fromX, std::int32_t fromY, std::int32_t toX, std::int32_t toY);

  RecordingRenderTarget& target() noexcept { return target_; }
  const Window::WindowOptions& options() const noexcept { return options_; }
  Window::CursorShape cursor() const noexcept { return cursor_; }
  bool captured() const noexcept { return captured_; }

 private:
  Window::WindowOptions options_;
  Window::WindowEvents& events_;
  RecordingRenderTarget target_;
  Window::WindowGeometry geometry_;
  bool visible_ = false;
  bool maximized_ = false;
  Window::CursorShape cursor_ = Window::CursorShape::Arrow;
  bool captured_ = false;
};

class FakePlatformServices : public Window::PlatformServices {
 public:
  FakePlatformServices();
  ~FakePlatformServices() override;

  std::unique_ptr<Window::PlatformWindow> createWindow(const Window::WindowOptions& options,
                                                       Window::WindowEvents& events) override;
  void showPopupMenu(Window::PlatformWindow& window, std::int32_t x, std::int32_t y,
                     const Window::PopupMenu& menu) override;
  std::shared_ptr<Dialog::MessagePresenter> messagePresenter() override { return nullptr; }
  void post(std::function<void()> task) override { posted_.push_back(std::move(task)); }
  void send(const std::function<void()>& task) override { task(); }
  std::uint32_t startTimer(std::int32_t milliseconds, std::function<void()> callback) override;
  void stopTimer(std::uint32_t id) override { timers_.erase(id); }
  void addWaitHandle(int descriptor, std::function<void()> callback) override;
  void removeWaitHandle(int descriptor) override { handles_.erase(descriptor); }
  std::wstring clipboardText() override { return clipboard_; }
  void setClipboardText(const std::wstring& text) override { clipboard_ = text; }
  void cursorPosition(std::int32_t& x, std::int32_t& y) override;
  void setCursorPosition(std::int32_t x, std::int32_t y) override;
  Window::WindowGeometry screenArea(std::int32_t, std::int32_t) override { return {0, 0, 1920, 1080}; }
  bool openPath(const std::wstring& path) override;

  // Runs posted work until the queue is empty, work posted meanwhile included.
  void runPosted();
  // Moves the manual clock on; due timers fire in time order.
  void advance(std::int32_t milliseconds);
  void signal(int descriptor);
  // The next popup menu runs the item with this text (looked up through submenus), or
  // nothing when empty. The menu shown last is kept.
  void chooseNext(std::wstring text) { choice_ = std::move(text); }
  const Window::PopupMenu& lastMenu() const noexcept { return lastMenu_; }
  std::int32_t menusShown() const noexcept { return menusShown_; }

  // The windows alive now, in order of creation; the first is the main window.
  const std::vector<FakeWindow*>& windows() const noexcept { return windows_; }
  const std::vector<std::wstring>& openedPaths() const noexcept { return opened_; }
  void forget(FakeWindow* window);

 private:
  struct Timer {
    std::int32_t period = 0;
    std::int64_t due = 0;
    std::function<void()> callback;
  };
  std::vector<FakeWindow*> windows_;
  std::vector<std::function<void()>> posted_;
  std::map<std::uint32_t, Timer> timers_;
  std::uint32_t lastTimer_ = 0;
  std::int64_t now_ = 0;
  std::map<int, std::function<void()>> handles_;
  std::wstring clipboard_;
  std::int32_t cursorX_ = 0;
  std::int32_t cursorY_ = 0;
  std::vector<std::wstring> opened_;
  std::wstring choice_;
  Window::PopupMenu lastMenu_;
  std::int32_t menusShown_ = 0;
};

}  // namespace TestSupport
