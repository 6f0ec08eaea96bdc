// The program's entry sequence: the services come up in one fixed order on the main
// thread, the main loop runs, and they go down in the reverse order. The whole order is
// in Application.cpp, in one place, so that a reader sees it at once.
#pragma once

#include <string>
#include <vector>

namespace App {

class Platform;

class Application {
 public:
  Application(Platform& platform, std::vector<std::wstring> arguments);

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
};

}  // namespace App
