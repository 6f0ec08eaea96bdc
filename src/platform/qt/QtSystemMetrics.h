// The machine's input timings, screen and memory as Qt and the OS report them. Without
// a display the defaults stand, so a headless run behaves the same everywhere.
#pragma once

#include "setting/SystemMetrics.h"

namespace Platform {

// Main thread, after the application object exists.
Setting::SystemMetrics querySystemMetrics(bool hasDisplay);

}  // namespace Platform
