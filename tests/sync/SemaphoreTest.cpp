#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "sync/Event.h"
#include "sync/Semaphore.h"

namespace {

using namespace std::chrono_literals;

constexpr auto kGuard = 10s;

TEST(SyncSemaphore, IsCreatedOnceAndBlocksWhenNoSlotIsFree) {
  Sync::Semaphore semaphore;
  semaphore.setMax(0);
  EXPECT_FALSE(semaphore.exists());
  semaphore.acquire();  // none yet: passes
  semaphore.setMax(2);
  semaphore.setMax(5);
  EXPECT_EQ(semaphore.max(), 2);

  semaphore.acquire();
  semaphore.acquire();
  Sync::Event acquired;
  std::thread taker([&] {
    semaphore.acquire();
    acquired.set();
  });
  EXPECT_FALSE(acquired.waitFor(20ms));
  semaphore.release();
  EXPECT_TRUE(acquired.waitFor(kGuard));
  taker.join();

  semaphore.open();
  for (int i = 0; i < 3; ++i) semaphore.acquire();
}

}  // namespace
