// Thread priorities in the program's own scale (the values of the MainThreadPriority
// and WorkerThreadPriority keys: -2 lowest ... 2 highest, -15 idle, 15 time critical).
#pragma once

namespace System::Process {

// Applies `priority` to the calling thread; 0 leaves it alone. A refusal of the system
// (raising a priority needs privileges) is swallowed: priorities are a wish.
void setThreadPriority(int priority) noexcept;

// The niceness that stands for a priority: five steps of niceness per step of priority.
int niceness(int priority) noexcept;

}  // namespace System::Process
