// The Qt implementation of the entry point's platform. This header stays free of Qt,
// so that the entry point does not pull the toolkit's headers in.
#pragma once

#include <memory>

#include "app/Platform.h"

namespace Platform {

// Makes the application object. Sets QT_ENABLE_HIGHDPI_SCALING=0 first, so Qt works in
// device pixels and only the program's own scaling applies; without any display it
// falls back to the offscreen platform, so a render node can run the program.
std::unique_ptr<App::Platform> createQtPlatform(int& argc, char** argv);

}  // namespace Platform
