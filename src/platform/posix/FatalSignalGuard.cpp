#include "system/FatalSignalGuard.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>

namespace System::FatalSignalGuard {

namespace {

constexpr int kFatalSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

std::function<void()>* emergencyHook = nullptr;
std::atomic<bool> hookStarted{false};
volatile sig_atomic_t originalSignal = 0;
unsigned boundSeconds = 5;

[[noreturn]] void dieWith(int signalNumber) {
  signal(signalNumber, SIG_DFL);
  sigset_t unblock;
  sigemptyset(&unblock);
  sigaddset(&unblock, signalNumber);
  sigprocmask(SIG_UNBLOCK, &unblock, nullptr);
  raise(signalNumber);
  // Only reached if the signal was ignored after all.
  _exit(128 + signalNumber);
}

// The save took longer than allowed: end with the signal that started it all.
void onTimeout(int) { dieWith(originalSignal != 0 ? originalSignal : SIGABRT); }

void onFatalSignal(int signalNumber) {
  // A second fault (inside the save, or on another thread) goes straight down.
  if (hookStarted.exchange(true)) dieWith(signalNumber);
  originalSignal = signalNumber;
  if (emergencyHook && *emergencyHook) {
    signal(SIGALRM, onTimeout);
    alarm(boundSeconds);
    try {
      (*emergencyHook)();
    } catch (...) {
      // The save failed; the process ends the same way.
    }
    alarm(0);
  }
  dieWith(signalNumber);
}

}  // namespace

void install(std::chrono::milliseconds bound) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(bound + std::chrono::milliseconds(999));
  boundSeconds = static_cast<unsigned>(seconds.count() > 0 ? seconds.count() : 1);
  struct sigaction action {};
  action.sa_handler = onFatalSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_NODEFER;
  for (int signalNumber : kFatalSignals) sigaction(signalNumber, &action, nullptr);
}

void setEmergencySaveHook(std::function<void()> hook) {
  // Replaced only on the main thread while no fault is being handled; the old hook is
  // kept alive on purpose, since a handler may be reading it on another thread.
  emergencyHook = new std::function<void()>(std::move(hook));
}

}  // namespace System::FatalSignalGuard
