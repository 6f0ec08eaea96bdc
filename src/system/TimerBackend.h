// The main loop's timers, as the platform provides them: callbacks run on the main
// thread between events. Installed by the platform before any service starts.
#pragma once

#include <cstdint>
#include <functional>

namespace System {

class TimerBackend {
 public:
  virtual ~TimerBackend() = default;
  // Starts a periodic timer; the first call comes after `milliseconds`. `precise` asks
  // for millisecond accuracy (the player's steps) instead of the coarse timer.
  // Returns an id above 0.
  virtual std::uint32_t start(std::int32_t milliseconds, bool precise, std::function<void()> callback) = 0;
  virtual void stop(std::uint32_t id) = 0;
};

// nullptr removes the backend; timers then fail to start.
void setTimerBackend(TimerBackend* backend) noexcept;
TimerBackend* timerBackend() noexcept;

}  // namespace System
