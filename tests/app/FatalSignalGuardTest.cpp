#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

#include "system/FatalSignalGuard.h"

namespace {

// Each case runs in a child process: the guard changes process-wide signal handling.
[[noreturn]] void crashAfterInstalling(std::function<void()> hook, int signalNumber) {
  System::FatalSignalGuard::install(std::chrono::seconds(1));
  System::FatalSignalGuard::setEmergencySaveHook(std::move(hook));
  std::raise(signalNumber);
  std::_Exit(0);
}

TEST(FatalSignalGuardDeathTest, SavesOnceThenDiesWithTheOriginalSignal) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(crashAfterInstalling([] { std::fputs("emergency save\n", stderr); }, SIGSEGV),
              ::testing::KilledBySignal(SIGSEGV), "emergency save");
  EXPECT_EXIT(crashAfterInstalling([] { std::fputs("emergency save\n", stderr); }, SIGABRT),
              ::testing::KilledBySignal(SIGABRT), "emergency save");
}

TEST(FatalSignalGuardDeathTest, AFaultInsideTheSaveDoesNotLoop) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(crashAfterInstalling(
                  [] {
                    std::fputs("saving\n", stderr);
                    std::raise(SIGFPE);
                  },
                  SIGBUS),
              ::testing::KilledBySignal(SIGFPE), "saving");
}

TEST(FatalSignalGuardDeathTest, ASaveThatHangsIsCutOff) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(crashAfterInstalling(
                  [] {
                    std::fputs("stuck\n", stderr);
                    for (;;) std::this_thread::sleep_for(std::chrono::milliseconds(50));
                  },
                  SIGILL),
              ::testing::KilledBySignal(SIGILL), "stuck");
}

}  // namespace
