// SIGTERM and SIGINT close the program in order, as closing the main window does. The
// signal handler only writes to a pipe; the main loop watches its read end.
#pragma once

namespace System::TerminationSignals {

// Installs the handlers and returns the descriptor that becomes readable on a signal.
int install();

// Empties the pipe; returns true when a termination signal was seen.
bool drain();

}  // namespace System::TerminationSignals
