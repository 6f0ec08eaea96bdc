// The program's entry sequence: the services come up in one fixed order on the main
// thread, the main loop runs, and they go down in the reverse order. The whole order is
// in Application.cpp, in one place, so that a reader sees it at once.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "event/Subscriptions.h"

namespace Edit {
class ProjectOpener;
}

namespace Window {
class WindowClient;
class WindowService;
}  // namespace Window

namespace App {

class Platform;

class Application {
 public:
  Application(Platform& platform, std::vector<std::wstring> arguments);
  ~Application();

  // Returns 0 on every path that returns, as the process must.
  int run();

 private:
  void start();
  void runMainLoop();
  void shutdown();
  void relaunchIfRequested();
  void requestClose();

  Platform& platform_;
  std::vector<std::wstring> arguments_;
  int terminationDescriptor_ = -1;
  bool closeRequested_ = false;
  std::unique_ptr<Window::WindowService> windows_;
  // The window contents, in order of creation.
  std::vector<std::unique_ptr<Window::WindowClient>> clients_;
  // The edit service's part of application begin; it stands in for the project life
  // cycle until that is built.
  std::unique_ptr<Edit::ProjectOpener> projectOpener_;
  Event::Subscriptions subscriptions_;
};

}  // namespace App
