// A counting semaphore that bounds a worker's queue: producers acquire a slot, the
// worker gives it back when it takes the task. It exists only once setMax() made it;
// until then acquire and release do nothing. Any thread.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace Sync {

class Semaphore {
 public:
  // Creates it with `maximum` free slots, once; 0, or a second call, does nothing.
  void setMax(std::int32_t maximum);
  bool exists() const;
  std::int32_t max() const;

  // Blocks while no slot is free.
  void acquire();
  void release(std::int32_t count = 1);
  // Frees every slot and lets every acquire through from now on: the queue is closing.
  void open();

 private:
  mutable std::mutex mutex_;
  std::condition_variable freed_;
  std::int32_t maximum_ = 0;
  std::int32_t available_ = 0;
  bool opened_ = false;
};

}  // namespace Sync
