// The process entry: the platform is made, the application runs its start sequence,
// main loop and shutdown, and the process returns 0 on every path that returns.
#include <chrono>
#include <vector>

#include "app/Application.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtSystemMetrics.h"
#include "setting/SettingService.h"
#include "system/FatalSignalGuard.h"
#include "system/TerminationSignals.h"
#include "system/Text.h"

int main(int argc, char** argv) {
  // The emergency save gets at most five seconds before the process dies with its signal.
  System::FatalSignalGuard::install(std::chrono::seconds(5));
  // From the first instant a SIGTERM waits in its pipe for the main loop, so that even an
  // early one closes the program in order.
  System::TerminationSignals::install();
  std::vector<std::wstring> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(System::Text::fromUtf8(argv[i]));
  const auto platform = Platform::createQtPlatform(argc, argv);
  const bool hasDisplay = platform->hasDisplay();
  Setting::SettingService::setSystemMetricsSource([hasDisplay] { return Platform::querySystemMetrics(hasDisplay); });
  App::Application application(*platform, std::move(arguments));
  return application.run();
}
