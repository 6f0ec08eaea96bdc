#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <thread>
#include <vector>

#include "system/ReaderWriterLock.h"

namespace {

using System::ReaderWriterLock;

// Only a guard against a hang: every wait here ends as soon as its condition holds.
bool waitUntil(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::yield();
  }
  return true;
}

// Render-like readers: each takes the lock shared, holds it for a little while and
// comes straight back, so their holds overlap and the lock is almost never free.
class ReaderCrowd {
 public:
  ReaderCrowd(ReaderWriterLock& lock, int count) : lock_(lock) {
    for (int i = 0; i < count; ++i) threads_.emplace_back([this] { run(); });
  }
  ~ReaderCrowd() { stop(); }

  void stop() {
    running_ = false;
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
  }

  std::uint64_t acquisitions() const { return acquisitions_; }
  int inside() const { return inside_; }

 private:
  void run() {
    while (running_) {
      lock_.lock_shared();
      ++inside_;
      ++acquisitions_;
      for (int i = 0; i < 50; ++i) std::this_thread::yield();
      --inside_;
      lock_.unlock_shared();
    }
  }

  ReaderWriterLock& lock_;
  std::atomic<bool> running_{true};
  std::atomic<std::uint64_t> acquisitions_{0};
  std::atomic<int> inside_{0};
  std::vector<std::thread> threads_;
};

TEST(ReaderWriterLock, WaitingWriterBarsNewReadersAndGetsThrough) {
  ReaderWriterLock lock;
  lock.lock_shared();  // outlasts the writer's arrival, so the writer must wait
  ReaderCrowd crowd(lock, 4);
  ASSERT_TRUE(waitUntil([&] { return crowd.acquisitions() >= 100; }));

  std::atomic<bool> writerIn{false};
  std::atomic<int> readersWithWriter{-1};
  std::thread writer([&] {
    lock.lock();
    readersWithWriter = crowd.inside();
    writerIn = true;
    lock.unlock();
  });

  // Only readers hold the lock, yet a new reader is refused once the writer waits.
  const bool refused = waitUntil([&] {
    if (!lock.try_lock_shared()) return true;
    lock.unlock_shared();
    return false;
  });
  EXPECT_TRUE(refused);
  EXPECT_FALSE(writerIn);
  // The crowd's current holds run out and its next requests queue behind the writer.
  EXPECT_TRUE(waitUntil([&] { return crowd.inside() == 0; }));

  lock.unlock_shared();
  EXPECT_TRUE(waitUntil([&] { return writerIn.load(); }));
  // Stopping the crowd first frees a starved writer, so the join cannot hang.
  crowd.stop();
  writer.join();
  EXPECT_EQ(readersWithWriter, 0);
}

}  // namespace
