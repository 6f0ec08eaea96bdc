// Whether the process's standard error reaches a person: progress that redraws a line
// only makes sense on a terminal, never in a log file or a pipe.
#pragma once

namespace System {

bool standardErrorIsTerminal() noexcept;

}  // namespace System
