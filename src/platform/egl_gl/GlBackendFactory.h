// How the application and the tests start the graphics device on OpenGL, without seeing
// any GL or EGL header: GraphicsDevice(Platform::createGlBackend, settings).
#pragma once

#include <memory>

#include "media/GraphicsBackend.h"

namespace Platform {

// Makes the EGL context current on the calling thread, which must be the device's GPU
// thread, and sets the conventions. Throws with the EGL call that failed.
std::unique_ptr<Media::GraphicsBackend> createGlBackend();

}  // namespace Platform
