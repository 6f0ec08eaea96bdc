// The one graphics device of the GPU test program, on the GL back end, and what its
// tests share: read-backs, half floats, test images and a hand-written frame shader. A
// test calls MEDIA_REQUIRE_GPU() first; it skips, saying why, only where EGL cannot
// start at all.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "media/CompiledShader.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"
#include "media/reference/PassImage.h"

namespace MediaTest {

// The device, or null with the reason in `why`. Made at the first call, kept for the
// whole program.
Media::GraphicsDevice* gpuDevice(std::string& why);
// The device, for a test past MEDIA_REQUIRE_GPU(), and work run on its GPU thread.
Media::GraphicsDevice& gpu();
void onGpu(const std::function<void()>& work);

std::vector<std::byte> toHalfPixels(const std::vector<float>& values);
std::vector<float> fromHalfPixels(const std::vector<std::byte>& bytes);

// The pixels of `buffer` as stored, through a CPU-readable copy. On the GPU thread.
std::vector<std::byte> readBack(Media::ResourceBuffer& buffer);

// An image to an RGBA16F buffer and back. On the GPU thread.
std::unique_ptr<Media::ResourceBuffer> upload(const Media::PassImage& image);
Media::PassImage readImage(Media::ResourceBuffer& buffer);

// Premultiplied pixels, exact in half precision, with alphas 0, 1/255, 1 and two
// between, spread so that neighbours differ; `seed` makes the images of one case differ.
Media::PassImage testImage(std::uint32_t width, std::uint32_t height, std::uint32_t seed);

// Each component within 2e-3 of the expected value relatively plus `absolute`: the
// rounding of a half-float result, plus what the caller's path adds. Reports the first
// four misses.
void expectImageNear(const std::vector<float>& actual, const Media::PassImage& expected, float absolute);

// A whole-frame pixel shader of the position-only path with `body` as its main, which
// may read `source0` and `source1` (texture units 0 and 1) and writes `color`.
Media::CompiledShader framePixelShader(const std::string& body);

}  // namespace MediaTest

#define MEDIA_REQUIRE_GPU()                                                          \
  do {                                                                               \
    std::string why_;                                                                \
    if (!::MediaTest::gpuDevice(why_)) GTEST_SKIP() << "EGL cannot start: " << why_; \
  } while (false)
