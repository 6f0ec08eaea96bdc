// A manual-reset event: once set it stays set, and every waiter passes, until reset.
// Any thread may set, reset and wait.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Sync {

class Event {
 public:
  void set();
  void reset();
  void wait();
  // False when the time ran out before the event was set.
  bool waitFor(std::chrono::milliseconds timeout);
  bool isSet() const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool signalled_ = false;
};

}  // namespace Sync
