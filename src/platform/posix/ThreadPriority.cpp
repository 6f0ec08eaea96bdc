#include "system/ThreadPriority.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>

namespace System::Process {

int niceness(int priority) noexcept { return std::clamp(-priority * 5, -20, 19); }

void setThreadPriority(int priority) noexcept {
  if (priority == 0) return;
  // On Linux a thread's niceness is set through its thread id.
  const auto thread = static_cast<id_t>(syscall(SYS_gettid));
  [[maybe_unused]] const int result = setpriority(PRIO_PROCESS, thread, niceness(priority));
}

}  // namespace System::Process
