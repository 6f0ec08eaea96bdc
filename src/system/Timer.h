// A coarse timer of the main loop: the callback runs on the main thread every interval
// until clear(). Main thread only. The object owns its timer: destroying it clears it.
#pragma once

#include <cstdint>
#include <functional>

namespace System {

class Timer {
 public:
  Timer() = default;
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  // A second set re-arms the timer with the new interval and callback.
  void set(std::int32_t milliseconds, std::function<void()> callback);
  void clear() noexcept;
  bool isSet() const noexcept { return id_ != 0; }

 protected:
  // The precise form is the player's: Sync::Timer.
  void start(std::int32_t milliseconds, bool precise, std::function<void()> callback, const char* place);

 private:
  std::uint32_t id_ = 0;
};

}  // namespace System
