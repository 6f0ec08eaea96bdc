// The one graphics device of the GPU test program, on the GL back end, and what its
// tests share: half-float pixels and small hand-written shaders. A test calls
// MEDIA_REQUIRE_GPU() first; it skips, saying why, only where EGL cannot start at all.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "media/CompiledShader.h"
#include "media/GraphicsDevice.h"

namespace MediaTest {

// The device, or null with the reason in `why`. Made at the first call, kept for the
// whole program.
Media::GraphicsDevice* gpuDevice(std::string& why);

// Runs `work` on the GPU thread.
void onGpu(const std::function<void()>& work);

std::vector<std::byte> toHalfPixels(const std::vector<float>& values);
std::vector<float> fromHalfPixels(const std::vector<std::byte>& bytes);

// A whole-frame pixel shader of the position-only path with `body` as its main, which
// may read `source0` and `source1` (texture units 0 and 1) and writes `color`.
Media::CompiledShader framePixelShader(const std::string& body);

}  // namespace MediaTest

#define MEDIA_REQUIRE_GPU()                                                          \
  do {                                                                               \
    std::string why_;                                                                \
    if (!::MediaTest::gpuDevice(why_)) GTEST_SKIP() << "EGL cannot start: " << why_; \
  } while (false)
