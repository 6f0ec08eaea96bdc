// The Qt main loop on the offscreen platform: posted work, timers and watched
// descriptors reach the main thread, and no exception ever crosses the loop.
#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <stdexcept>
#include <thread>

#include "platform/qt/QtPlatform.h"
#include "system/Exception.h"
#include "system/TerminationSignals.h"
#include "system/Timer.h"

namespace {

App::Platform& platform() {
  static int argc = 1;
  static char name[] = "sorvel_app_tests";
  static char* argv[] = {name, nullptr};
  static const std::unique_ptr<App::Platform> instance = Platform::createQtPlatform(argc, argv);
  return *instance;
}

TEST(QtPlatform, WorkPostedFromAnotherThreadRunsOnceOnTheMainThread) {
  App::Platform& loop = platform();
  EXPECT_FALSE(loop.hasDisplay());
  const std::thread::id mainThread = std::this_thread::get_id();
  int runs = 0;
  std::thread::id ranOn;
  std::thread poster([&] {
    loop.post([&] {
      ++runs;
      ranOn = std::this_thread::get_id();
    });
    loop.post([&] { loop.quit(); });
  });
  poster.join();
  loop.run();
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(ranOn, mainThread);
}

TEST(QtPlatform, AnExceptionLeavesTheLoopAndIsRethrownAfterIt) {
  App::Platform& loop = platform();
  bool laterTaskRan = false;
  loop.post([] { throw System::NoteException("Test::task", "task failed."); });
  loop.post([&] { laterTaskRan = true; });
  try {
    loop.run();
    FAIL() << "the exception was lost";
  } catch (const System::NoteException& e) {
    EXPECT_EQ(e.message(), "task failed.");
  }
  EXPECT_FALSE(laterTaskRan);
  // The loop is usable again afterwards.
  loop.post([&] { loop.quit(); });
  loop.run();
}

TEST(QtPlatform, TimersAndWatchedDescriptorsRunOnTheLoop) {
  App::Platform& loop = platform();
  int ticks = 0;
  System::Timer timer;
  timer.set(1, [&] {
    if (++ticks == 3) {
      timer.clear();
      loop.quit();
    }
  });
  loop.run();
  EXPECT_EQ(ticks, 3);

  const int descriptor = System::TerminationSignals::install();
  bool seen = false;
  loop.watch(descriptor, [&] {
    seen = System::TerminationSignals::drain();
    loop.quit();
  });
  std::raise(SIGTERM);
  loop.run();
  loop.unwatch(descriptor);
  EXPECT_TRUE(seen);
}

}  // namespace
