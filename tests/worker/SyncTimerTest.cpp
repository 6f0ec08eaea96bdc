#include <gtest/gtest.h>

#include <map>

#include "sync/Timer.h"
#include "system/TimerBackend.h"

namespace {

class RecordingBackend : public System::TimerBackend {
 public:
  std::uint32_t start(std::int32_t milliseconds, bool precise, std::function<void()> callback) override {
    lastMilliseconds = milliseconds;
    lastPrecise = precise;
    callbacks[++lastId] = std::move(callback);
    return lastId;
  }
  void stop(std::uint32_t id) override { callbacks.erase(id); }
  std::map<std::uint32_t, std::function<void()>> callbacks;
  std::uint32_t lastId = 0;
  std::int32_t lastMilliseconds = 0;
  bool lastPrecise = false;
};

TEST(SyncTimer, StepsPreciselyWithItsOwnCallback) {
  RecordingBackend backend;
  System::setTimerBackend(&backend);
  int steps = 0;
  {
    Sync::Timer timer([&] { ++steps; });
    timer.setInterval(12);
    EXPECT_TRUE(backend.lastPrecise);
    EXPECT_EQ(backend.lastMilliseconds, 12);
    backend.callbacks.begin()->second();
    timer.setInterval(200);
    ASSERT_EQ(backend.callbacks.size(), 1u);
    backend.callbacks.begin()->second();
    EXPECT_EQ(steps, 2);
  }
  EXPECT_TRUE(backend.callbacks.empty());
  System::setTimerBackend(nullptr);
}

}  // namespace
