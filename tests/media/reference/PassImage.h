// An RGBA float image on the CPU: what the CPU references of the frame passes and of the
// blend states read and write, and what GPU checks and benchmarks compare against.
// Pixels are four floats each, rows top first, no padding.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace Media {

using Rgba = std::array<float, 4>;

struct PassImage {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::vector<float> pixels;  // width * height * 4

  PassImage() = default;
  PassImage(std::uint32_t w, std::uint32_t h) : width(w), height(h), pixels(std::size_t{w} * h * 4, 0.0f) {}

  bool contains(std::int64_t x, std::int64_t y) const noexcept {
    return x >= 0 && y >= 0 && x < width && y < height;
  }
  Rgba at(std::uint32_t x, std::uint32_t y) const noexcept {
    const float* p = &pixels[(std::size_t{y} * width + x) * 4];
    return {p[0], p[1], p[2], p[3]};
  }
  void set(std::uint32_t x, std::uint32_t y, const Rgba& value) noexcept {
    float* p = &pixels[(std::size_t{y} * width + x) * 4];
    for (int i = 0; i < 4; ++i) p[i] = value[i];
  }
};

}  // namespace Media
