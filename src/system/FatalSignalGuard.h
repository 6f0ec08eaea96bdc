// Turns a fatal processor or abort signal into one emergency save before the process
// dies with the original signal. The project life cycle installs the save; until then
// the guard only makes sure that the process ends the way it would have.
#pragma once

#include <chrono>
#include <functional>

namespace System::FatalSignalGuard {

// Installs the handlers for SIGSEGV, SIGBUS, SIGFPE, SIGILL and SIGABRT. The hook runs
// at most once per process and is cut off after `bound`.
void install(std::chrono::milliseconds bound);

// Runs on whatever thread faulted; it must not take locks that the faulting code may hold.
void setEmergencySaveHook(std::function<void()> hook);

}  // namespace System::FatalSignalGuard
