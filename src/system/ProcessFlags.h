// The two process-wide flags that steer the way down. Set from the exception and
// recovery paths (any thread), read on the main thread during shutdown.
#pragma once

#include <atomic>

namespace System {

// An exception reached the top or a crash was reported: no resume file, no backups.
inline std::atomic<bool> exceptionOccurred{false};

// A module installation asked for a relaunch with "-restart" after the orderly exit.
inline std::atomic<bool> restartRequested{false};

}  // namespace System
