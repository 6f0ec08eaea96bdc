#include "sync/Semaphore.h"

#include <algorithm>

namespace Sync {

void Semaphore::setMax(std::int32_t maximum) {
  std::lock_guard lock(mutex_);
  if (maximum <= 0 || maximum_ > 0) return;
  maximum_ = maximum;
  available_ = maximum;
}

bool Semaphore::exists() const {
  std::lock_guard lock(mutex_);
  return maximum_ > 0;
}

std::int32_t Semaphore::max() const {
  std::lock_guard lock(mutex_);
  return maximum_;
}

void Semaphore::acquire() {
  std::unique_lock lock(mutex_);
  if (maximum_ == 0) return;
  freed_.wait(lock, [this] { return opened_ || available_ > 0; });
  if (!opened_) --available_;
}

void Semaphore::release(std::int32_t count) {
  {
    std::lock_guard lock(mutex_);
    if (maximum_ == 0) return;
    available_ = std::min(maximum_, available_ + count);
  }
  freed_.notify_all();
}

void Semaphore::open() {
  {
    std::lock_guard lock(mutex_);
    opened_ = true;
    available_ = maximum_;
  }
  freed_.notify_all();
}

}  // namespace Sync
