#include <gtest/gtest.h>

#include <map>

#include "sync/Timer.h"
#include "system/Exception.h"
#include "system/Timer.h"
#include "system/TimerBackend.h"

namespace {

class RecordingBackend : public System::TimerBackend {
 public:
  std::uint32_t start(std::int32_t milliseconds, bool precise, std::function<void()> callback) override {
    running[++lastId] = {milliseconds, precise, std::move(callback)};
    return lastId;
  }
  void stop(std::uint32_t id) override { running.erase(id); }

  struct Running {
    std::int32_t milliseconds;
    bool precise;
    std::function<void()> callback;
  };
  std::map<std::uint32_t, Running> running;
  std::uint32_t lastId = 0;
};

TEST(Timer, SetAgainRearmsAndDestructionClears) {
  RecordingBackend backend;
  System::setTimerBackend(&backend);
  int fired = 0;
  {
    System::Timer timer;
    timer.set(200, [&] { fired += 1; });
    timer.set(500, [&] { fired += 10; });
    ASSERT_EQ(backend.running.size(), 1u);
    EXPECT_EQ(backend.running.begin()->second.milliseconds, 500);
    EXPECT_FALSE(backend.running.begin()->second.precise);
    backend.running.begin()->second.callback();
    EXPECT_EQ(fired, 10);
    timer.clear();
    EXPECT_FALSE(timer.isSet());
    EXPECT_TRUE(backend.running.empty());
    timer.set(100, [] {});
  }
  EXPECT_TRUE(backend.running.empty());
  System::setTimerBackend(nullptr);
}

TEST(Timer, SyncTimerStepsPreciselyWithItsOwnCallback) {
  RecordingBackend backend;
  System::setTimerBackend(&backend);
  int steps = 0;
  {
    Sync::Timer timer([&] { ++steps; });
    timer.setInterval(12);
    ASSERT_EQ(backend.running.size(), 1u);
    EXPECT_TRUE(backend.running.begin()->second.precise);
    EXPECT_EQ(backend.running.begin()->second.milliseconds, 12);
    backend.running.begin()->second.callback();
    timer.setInterval(200);
    ASSERT_EQ(backend.running.size(), 1u);
    backend.running.begin()->second.callback();
    EXPECT_EQ(steps, 2);
  }
  EXPECT_TRUE(backend.running.empty());
  System::setTimerBackend(nullptr);
}

TEST(Timer, WithoutAMainLoopTheTimerRefusesToStart) {
  System::setTimerBackend(nullptr);
  System::Timer timer;
  EXPECT_THROW(timer.set(100, [] {}), System::NoteException);
  EXPECT_FALSE(timer.isSet());
}

}  // namespace
