// Window::PlatformServices on Qt. This header stays free of Qt.
#pragma once

#include <functional>
#include <memory>

#include "platform/qt/QtCanvasWindow.h"
#include "window/PlatformServices.h"

namespace Dialog {
class MessagePresenter;
}

namespace Platform {

// What the services borrow from the loop that owns them.
struct LoopAccess {
  LoopGuard guard;                                   // runs a callback from the loop, catching
  std::function<void(std::function<void()>)> post;   // runs work on the main thread later
  std::function<void(int, std::function<void()>)> watch;
  std::function<void(int)> unwatch;
  std::function<std::shared_ptr<Dialog::MessagePresenter>()> presenter;
};

// Main thread, after the application object exists.
std::unique_ptr<Window::PlatformServices> createWindowServices(LoopAccess loop);

}  // namespace Platform
