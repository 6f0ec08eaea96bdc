// The precise periodic timer of the main loop, for work that steps in milliseconds (the
// player every 12 ms, the log view, the export progress). The callback is fixed at
// construction and runs on the main thread. Main thread only.
#pragma once

#include <cstdint>
#include <functional>

#include "system/Timer.h"

namespace Sync {

class Timer : private System::Timer {
 public:
  explicit Timer(std::function<void()> callback) : callback_(std::move(callback)) {}

  // First call after `milliseconds`, then every `milliseconds`; a second call re-arms.
  void setInterval(std::int32_t milliseconds) {
    start(milliseconds, true, [this] { callback_(); }, "Sync::Timer::setInterval");
  }
  using System::Timer::clear;
  using System::Timer::isSet;

 private:
  std::function<void()> callback_;
};

}  // namespace Sync
