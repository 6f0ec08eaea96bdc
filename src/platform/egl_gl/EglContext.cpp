#include "platform/egl_gl/EglContext.h"

#include <EGL/eglext.h>

#include <cstring>
#include <vector>

#include "system/Exception.h"

namespace Platform {

namespace {

constexpr const char* kPlace = "Media::GraphicsDevice::GraphicsDevice";

bool hasExtension(const char* extensions, const char* name) {
  if (!extensions) return false;
  const std::size_t length = std::strlen(name);
  for (const char* at = std::strstr(extensions, name); at; at = std::strstr(at + length, name)) {
    const bool startsWord = at == extensions || at[-1] == ' ';
    if (startsWord && (at[length] == ' ' || at[length] == '\0')) return true;
  }
  return false;
}

// The GPUs that the device platform offers; the software device is left to the
// surfaceless platform, which is the same renderer.
std::vector<EGLDeviceEXT> hardwareDevices() {
  auto queryDevices = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
  auto queryDeviceString =
      reinterpret_cast<PFNEGLQUERYDEVICESTRINGEXTPROC>(eglGetProcAddress("eglQueryDeviceStringEXT"));
  std::vector<EGLDeviceEXT> found;
  if (!queryDevices || !queryDeviceString) return found;
  EGLint count = 0;
  if (!queryDevices(0, nullptr, &count) || count <= 0) return found;
  std::vector<EGLDeviceEXT> devices(static_cast<std::size_t>(count));
  if (!queryDevices(count, devices.data(), &count)) return found;
  for (EGLint i = 0; i < count; ++i) {
    const char* extensions = queryDeviceString(devices[i], EGL_EXTENSIONS);
    if (!hasExtension(extensions, "EGL_MESA_device_software")) found.push_back(devices[i]);
  }
  return found;
}

}  // namespace

EglContext::EglContext() {
  const char* clientExtensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
  if (hasExtension(clientExtensions, "EGL_EXT_platform_device")) {
    for (EGLDeviceEXT device : hardwareDevices()) {
      if (tryDisplay(eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr))) {
        platform_ = "device";
        return;
      }
    }
  }
  if (tryDisplay(eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr))) {
    platform_ = "surfaceless";
    return;
  }
  throw System::HResultException(lastCall_, kPlace, static_cast<std::uint32_t>(lastError_));
}

EglContext::~EglContext() {
  eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display_, context_);
  eglTerminate(display_);
}

bool EglContext::tryDisplay(EGLDisplay display) {
  auto fail = [this, display](const char* call) {
    lastCall_ = call;
    lastError_ = eglGetError();
    if (display != EGL_NO_DISPLAY) eglTerminate(display);
    return false;
  };
  if (display == EGL_NO_DISPLAY) return fail("eglGetPlatformDisplay");
  EGLint major = 0, minor = 0;
  if (!eglInitialize(display, &major, &minor)) return fail("eglInitialize");
  if (!eglBindAPI(EGL_OPENGL_API)) return fail("eglBindAPI");

  EGLConfig config = EGL_NO_CONFIG_KHR;
  if (!hasExtension(eglQueryString(display, EGL_EXTENSIONS), "EGL_KHR_no_config_context")) {
    const EGLint wanted[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLint count = 0;
    if (!eglChooseConfig(display, wanted, &config, 1, &count) || count < 1) return fail("eglChooseConfig");
  }
  const EGLint attributes[] = {
      EGL_CONTEXT_MAJOR_VERSION,           4,       EGL_CONTEXT_MINOR_VERSION, 5, EGL_CONTEXT_OPENGL_PROFILE_MASK,
      EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT, EGL_NONE};
  EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, attributes);
  if (context == EGL_NO_CONTEXT) return fail("eglCreateContext");
  if (!eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
    eglDestroyContext(display, context);
    return fail("eglMakeCurrent");
  }
  display_ = display;
  context_ = context;
  return true;
}

}  // namespace Platform
