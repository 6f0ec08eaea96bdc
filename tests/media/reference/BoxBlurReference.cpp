#include "media/reference/BoxBlurReference.h"

#include <algorithm>
#include <cmath>

namespace Media {

namespace {

float toHalf(float value) { return static_cast<float>(static_cast<_Float16>(value)); }

}  // namespace

PassImage boxPassReference(const PassImage& source, BlurAxis axis, std::int32_t radius, BlurMode mode,
                           bool halfSteps) {
  const bool alongX = axis == BlurAxis::X;
  const std::int64_t grow = mode == BlurMode::Grow ? 2 * radius : 0;
  PassImage out(source.width + (alongX ? grow : 0), source.height + (alongX ? 0 : grow));
  const std::int64_t length = alongX ? source.width : source.height;
  // Mode Grow: result pixel p sums source p - 2r to p; the others p - r to p + r.
  const std::int64_t shift = mode == BlurMode::Grow ? 2 * radius : radius;
  const double divide = 1.0 / (2.0 * radius + 1.0);
  for (std::uint32_t y = 0; y < out.height; ++y) {
    for (std::uint32_t x = 0; x < out.width; ++x) {
      double sum[4] = {0, 0, 0, 0};
      const std::int64_t p = alongX ? x : y;
      for (std::int64_t q = p - shift; q <= p - shift + 2 * radius; ++q) {
        std::int64_t at = q;
        if (mode == BlurMode::KeepClamped) at = std::clamp<std::int64_t>(q, 0, length - 1);
        if (at < 0 || at >= length) continue;
        const auto along = static_cast<std::uint32_t>(at);
        const Rgba v = alongX ? source.at(along, y) : source.at(x, along);
        for (int c = 0; c < 4; ++c) sum[c] += v[c];
      }
      Rgba value;
      for (int c = 0; c < 4; ++c) {
        value[c] = static_cast<float>(sum[c] * divide);
        if (halfSteps) value[c] = toHalf(value[c]);
      }
      out.set(x, y, value);
    }
  }
  return out;
}

PassImage blurReference(const PassImage& image, std::int32_t radius, double aspect, BlurMode mode, bool halfSteps) {
  if (radius <= 0) return image;
  std::int32_t rx = radius;
  std::int32_t ry = radius;
  if (aspect > 0) ry = std::max(0, static_cast<std::int32_t>((1.0 - aspect) * radius));
  if (aspect < 0) rx = std::max(0, static_cast<std::int32_t>((1.0 + aspect) * radius));
  PassImage out = image;
  const auto run = [&](BlurAxis axis, std::int32_t r) {
    if (r > 0) out = boxPassReference(out, axis, r, mode, halfSteps);
  };
  run(BlurAxis::Y, ry - ry / 2);
  run(BlurAxis::X, rx - rx / 2);
  run(BlurAxis::Y, ry / 2);
  run(BlurAxis::X, rx / 2);
  return out;
}

}  // namespace Media
