#include "system/Terminal.h"

#include <unistd.h>

namespace System {

bool standardErrorIsTerminal() noexcept { return isatty(STDERR_FILENO) == 1; }

}  // namespace System
