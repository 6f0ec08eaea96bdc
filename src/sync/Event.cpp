#include "sync/Event.h"

namespace Sync {

void Event::set() {
  // Notified under the lock: a waiter may destroy the event as soon as it sees it set,
  // as the barrier of a worker does, so set() must be done with it by then.
  std::lock_guard lock(mutex_);
  signalled_ = true;
  changed_.notify_all();
}

void Event::reset() {
  std::lock_guard lock(mutex_);
  signalled_ = false;
}

void Event::wait() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return signalled_; });
}

bool Event::waitFor(std::chrono::milliseconds timeout) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, timeout, [this] { return signalled_; });
}

bool Event::isSet() const {
  std::lock_guard lock(mutex_);
  return signalled_;
}

}  // namespace Sync
