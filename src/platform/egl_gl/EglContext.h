// The EGL display and the OpenGL 4.5 core context of the graphics device, without any
// surface. A GPU found through the EGL device platform is preferred; otherwise Mesa's
// surfaceless platform renders on the CPU. Made current on the thread that creates it.
#pragma once

#include <EGL/egl.h>

#include <string>

namespace Platform {

class EglContext {
 public:
  EglContext();
  ~EglContext();
  EglContext(const EglContext&) = delete;
  EglContext& operator=(const EglContext&) = delete;

  // "device" or "surfaceless": which platform the context runs on.
  const std::string& platformName() const noexcept { return platform_; }

 private:
  bool tryDisplay(EGLDisplay display);

  EGLDisplay display_ = EGL_NO_DISPLAY;
  EGLContext context_ = EGL_NO_CONTEXT;
  std::string platform_;
  EGLint lastError_ = EGL_SUCCESS;
  const char* lastCall_ = "eglGetPlatformDisplay";
};

}  // namespace Platform
