#include "system/Timer.h"

#include "system/Exception.h"
#include "system/TimerBackend.h"

namespace System {

namespace {
TimerBackend* installedBackend = nullptr;
}

void setTimerBackend(TimerBackend* backend) noexcept { installedBackend = backend; }

TimerBackend* timerBackend() noexcept { return installedBackend; }

Timer::~Timer() { clear(); }

void Timer::set(std::int32_t milliseconds, std::function<void()> callback) {
  start(milliseconds, false, std::move(callback), "System::Timer::set");
}

void Timer::start(std::int32_t milliseconds, bool precise, std::function<void()> callback, const char* place) {
  clear();
  if (!installedBackend) throw NoteException(place, "no main loop to run the timer.");
  if (milliseconds < 0) throw NoteException(place, "timer interval is negative.");
  id_ = installedBackend->start(milliseconds, precise, std::move(callback));
}

void Timer::clear() noexcept {
  if (id_ == 0) return;
  if (installedBackend) installedBackend->stop(id_);
  id_ = 0;
}

}  // namespace System
