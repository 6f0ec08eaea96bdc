// What the entry point needs of the windowing platform: the main loop, a way to run
// work on the main thread from any thread, descriptors watched by the loop, and the
// window services. Implemented with Qt in src/platform/qt.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "event/MainThreadPoster.h"

namespace Dialog {
class MessagePresenter;
}

namespace Window {
class PlatformServices;
}

namespace App {

class Platform : public Event::MainThreadPoster {
 public:
  virtual ~Platform() = default;

  // False for the offscreen and minimal platforms: boxes are then logged, not shown.
  virtual bool hasDisplay() const = 0;

  // Windows, menus, timers and the rest that the window service draws on. Main thread,
  // once the platform exists; it lives as long as the platform.
  virtual Window::PlatformServices& windowServices() = 0;

  // The way down has begun: no message box is shown from now on. quit() still ends the
  // loops that run.
  virtual void beginClosing() = 0;

  // Runs the loop until quit(). A callback that throws ends the loop, and its exception
  // is rethrown here, after the loop: no exception ever crosses the toolkit's loop.
  virtual void run() = 0;
  virtual void quit() = 0;

  // post(), from any thread: the task runs on the main thread inside the loop, in
  // posting order.

  // Main thread. The callback runs on the main thread whenever `descriptor` is readable.
  virtual void watch(int descriptor, std::function<void()> callback) = 0;
  virtual void unwatch(int descriptor) = 0;

  // The modal boxes of this platform, or a non-blocking stand-in without a display.
  virtual std::shared_ptr<Dialog::MessagePresenter> messagePresenter() = 0;

  // Starts a new, independent process of this program with the given arguments.
  virtual void startDetached(const std::vector<std::wstring>& arguments) = 0;
};

}  // namespace App
