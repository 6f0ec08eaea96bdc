// What the window logic needs of the platform besides its windows: making windows,
// popup menus, message boxes, the message pump with posted and sent work, timers, wait
// handles, the clipboard, the cursor position, the screen and opening a path. The Qt
// implementation lives in src/platform/qt; tests use a fake with a manual clock.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "window/PlatformWindow.h"

namespace Dialog {
class MessagePresenter;
}

namespace Window {

// A popup menu as data. An item with no text and no children is a separator.
struct PopupMenuItem {
  PopupMenuItem() = default;
  explicit PopupMenuItem(std::wstring text, std::function<void()> action = {}, bool enabled = true)
      : text(std::move(text)), action(std::move(action)), enabled(enabled) {}

  std::wstring text;
  std::function<void()> action;
  bool enabled = true;
  bool checked = false;
  bool radio = false;
  std::vector<PopupMenuItem> children;

  static PopupMenuItem separator() { return PopupMenuItem{}; }
  bool isSeparator() const noexcept { return text.empty() && children.empty(); }
};

struct PopupMenu {
  std::vector<PopupMenuItem> items;
  // The item with this text, looked up through submenus, or null.
  const PopupMenuItem* find(const std::wstring& text) const;
};

class PlatformServices {
 public:
  virtual ~PlatformServices() = default;

  virtual std::unique_ptr<PlatformWindow> createWindow(const WindowOptions& options, WindowEvents& events) = 0;

  // Shows the menu at the screen point, waits for the choice and runs its action after
  // the menu is gone.
  virtual void showPopupMenu(PlatformWindow& window, std::int32_t x, std::int32_t y, const PopupMenu& menu) = 0;
  virtual std::shared_ptr<Dialog::MessagePresenter> messagePresenter() = 0;

  // Any thread: runs `task` on the main thread from the loop, in posting order.
  virtual void post(std::function<void()> task) = 0;
  // Any thread other than the main one: runs `task` on the main thread and waits for it.
  virtual void send(const std::function<void()>& task) = 0;

  // Main thread. Timers repeat until stopped; ids are never 0.
  virtual std::uint32_t startTimer(std::int32_t milliseconds, std::function<void()> callback) = 0;
  virtual void stopTimer(std::uint32_t id) = 0;
  // A readable descriptor (eventfd, timerfd, pipe) calls `callback` on the main thread.
  virtual void addWaitHandle(int descriptor, std::function<void()> callback) = 0;
  virtual void removeWaitHandle(int descriptor) = 0;

  virtual std::wstring clipboardText() = 0;
  virtual void setClipboardText(const std::wstring& text) = 0;

  virtual void cursorPosition(std::int32_t& x, std::int32_t& y) = 0;
  virtual void setCursorPosition(std::int32_t x, std::int32_t y) = 0;
  // The screen that holds the point, without task bars.
  virtual WindowGeometry screenArea(std::int32_t x, std::int32_t y) = 0;

  // Opens a file or folder with the desktop's handler; false when nothing could.
  virtual bool openPath(const std::wstring& path) = 0;
};

}  // namespace Window
