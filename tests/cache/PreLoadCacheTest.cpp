// The template of the caches: what it keeps within its limit, one load for a key however
// many ask, and that no caller stays blocked, whether a load fails, a promise is given up
// or the cache stops.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "cache/PreLoadCache.h"

namespace {

using TextCache = System::PreLoadCache<std::int32_t, std::string>;
constexpr std::uint64_t kHalf = std::uint64_t{1} << 19;  // half the limit of 1 MiB

std::shared_ptr<std::string> text(std::string value) { return std::make_shared<std::string>(std::move(value)); }
std::string valueOf(const std::shared_ptr<std::string>& value) { return value ? *value : "<none>"; }

// Waits for another thread to reach a state the test can see; a bound, not a timing.
bool eventually(const std::function<bool()>& reached) {
  for (int i = 0; i < 10000; ++i) {
    if (reached()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

// A thread blocked in get on a promise of `key`, returned once it waits.
std::thread blockedOnPromise(TextCache& cache, std::int32_t key) {
  const std::uint64_t misses = cache.statistics().misses;
  EXPECT_TRUE(cache.promise(key));
  std::thread thread([&cache, key] { EXPECT_FALSE(cache.get(key, {})); });
  EXPECT_TRUE(eventually([&] { return cache.statistics().misses == misses + 1; }));
  return thread;
}

TEST(PreLoadCache, KeepsTheMostRecentlyUsedWithinItsLimit) {
  TextCache cache(4);
  cache.setLimit(1);
  cache.put(1, text("one"), kHalf);
  cache.put(2, text("two"), kHalf);
  EXPECT_EQ(valueOf(cache.find(1)), "one");  // 2 is now the least recently used
  cache.put(3, text("three"), kHalf);
  EXPECT_FALSE(cache.find(2));
  EXPECT_TRUE(cache.find(1));
  EXPECT_EQ(cache.total(), 2 * kHalf);

  cache.put(1, text("uno"), kHalf / 2);  // replaces the value and its size
  EXPECT_EQ(valueOf(cache.find(1)), "uno");
  EXPECT_EQ(cache.total(), kHalf + kHalf / 2);
  cache.eraseIf([](std::int32_t key) { return key == 3; });
  EXPECT_EQ(cache.total(), kHalf / 2);
  EXPECT_EQ(cache.count(), 1u);
}

TEST(PreLoadCache, ValuesBeyondTheLimitStillReachTheirCaller) {
  TextCache cache(4);
  cache.setLimit(1);
  EXPECT_EQ(valueOf(cache.get(1, [&] { cache.put(1, text("large"), 3 * kHalf); })), "large");
  EXPECT_EQ(cache.count(), 0u);

  cache.put(2, text("kept"), kHalf);
  cache.setLimit(0);
  EXPECT_EQ(cache.count(), 0u);
  EXPECT_EQ(cache.total(), 0u);
  EXPECT_EQ(valueOf(cache.get(3, [&] { cache.put(3, text("small"), 1); })), "small");
  EXPECT_EQ(cache.count(), 0u);
}

TEST(PreLoadCache, CallersOfOneKeyShareOneLoad) {
  TextCache cache(4);
  cache.setLimit(1);
  Sync::Event gate;
  std::atomic<int> loads{0};
  const TextCache::Loader loader = [&] {
    ++loads;
    gate.wait();
    cache.put(7, text("seven"), 1);
  };
  std::shared_ptr<std::string> first, second;
  std::thread a([&] { first = cache.get(7, loader); });
  std::thread b([&] { second = cache.get(7, loader); });
  // Both missed while the gate held the load, so both wait for that one load.
  EXPECT_TRUE(eventually([&] { return cache.statistics().misses == 2; }));
  gate.set();
  a.join();
  b.join();
  ASSERT_TRUE(first);
  EXPECT_EQ(first, second);
  cache.preload(7, loader);  // listed: nothing to do
  cache.wait();
  EXPECT_EQ(loads, 1);
  EXPECT_EQ(cache.statistics().loads, 1u);
}

TEST(PreLoadCache, FailedLoadsGiveNothingAndAreTriedAgain) {
  TextCache cache(4);
  cache.setLimit(1);
  EXPECT_FALSE(cache.get(1, [] { throw std::runtime_error("unreadable"); }));
  EXPECT_FALSE(cache.get(1, [] {}));
  EXPECT_EQ(valueOf(cache.get(1, [&] { cache.put(1, text("read"), 1); })), "read");
  EXPECT_EQ(cache.statistics().loads, 3u);
}

TEST(PreLoadCache, PromisesAndStopNeverLeaveACallerBlocked) {
  TextCache cache(4);
  cache.setLimit(1);
  EXPECT_FALSE(cache.await(1));
  EXPECT_FALSE(cache.holds(1));  // await promised nothing

  ASSERT_TRUE(cache.promise(1));
  EXPECT_FALSE(cache.promise(1));
  std::shared_ptr<std::string> kept;
  std::thread waiter([&] { kept = cache.await(1); });
  cache.put(1, text("kept"), 1);
  waiter.join();
  EXPECT_EQ(valueOf(kept), "kept");

  std::thread abandoned = blockedOnPromise(cache, 2);
  cache.abandon(2);
  abandoned.join();
  EXPECT_FALSE(cache.holds(2));

  std::thread stopped = blockedOnPromise(cache, 3);
  cache.stop();
  stopped.join();
  EXPECT_FALSE(cache.get(4, [&] { cache.put(4, text("late"), 1); }));  // nothing loads after stop
  EXPECT_TRUE(cache.find(1));                                           // what was listed stays
}

// Lookups, loads, puts, promises, erasures and limit changes on a few keys from several
// threads at once. Under ThreadSanitizer this is where a race shows; here the books must
// balance at the end and nothing may deadlock.
TEST(PreLoadCache, ManyThreadsKeepTheBooksBalanced) {
  TextCache cache(2);
  cache.setLimit(1);
  constexpr std::uint64_t kSize = std::uint64_t{1} << 16;  // 16 fit
  std::vector<std::thread> threads;
  for (unsigned seed = 1; seed <= 6; ++seed) {
    threads.emplace_back([&cache, seed] {
      std::minstd_rand random(seed);
      for (int i = 0; i < 2000; ++i) {
        const auto key = static_cast<std::int32_t>(random() % 32);
        const TextCache::Loader load = [&cache, key] { cache.put(key, text(std::to_string(key)), kSize); };
        std::shared_ptr<std::string> value;
        switch (random() % 8) {
          case 0:
          case 1: value = cache.get(key, load); break;
          case 2: cache.preload(key, load); break;
          case 3: cache.put(key, text(std::to_string(key)), kSize); break;
          case 4: value = cache.find(key); break;
          case 5: cache.eraseIf([key](std::int32_t other) { return other % 5 == key % 5; }); break;
          case 6: cache.setLimit(static_cast<std::int32_t>(random() % 2)); break;
          default:
            if (!cache.promise(key)) break;
            if (key % 2) {
              cache.put(key, text(std::to_string(key)), kSize);
            } else {
              cache.abandon(key);
            }
        }
        EXPECT_TRUE(!value || *value == std::to_string(key));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  const auto statistics = cache.statistics();
  EXPECT_EQ(statistics.total, statistics.count * kSize);
  EXPECT_LE(statistics.total, statistics.limit);
}

}  // namespace
