#include "media/reference/SampleReference.h"

#include <cmath>

namespace Media {

namespace {

// The texel index that an address mode makes of `i`; -1 where the border colour shows.
std::int64_t address(AddressMode mode, std::int64_t i, std::int64_t size) noexcept {
  switch (mode) {
    case AddressMode::Border: return (i < 0 || i >= size) ? -1 : i;
    case AddressMode::Clamp: return i < 0 ? 0 : (i >= size ? size - 1 : i);
    case AddressMode::Wrap: return ((i % size) + size) % size;
    case AddressMode::Mirror: {
      const std::int64_t m = ((i % (2 * size)) + 2 * size) % (2 * size);
      return m < size ? m : 2 * size - 1 - m;
    }
  }
  return -1;
}

Rgba texel(const PassImage& image, const SamplerState& sampler, std::int64_t x, std::int64_t y) noexcept {
  const std::int64_t ax = address(sampler.addressU, x, image.width);
  const std::int64_t ay = address(sampler.addressV, y, image.height);
  if (ax < 0 || ay < 0) return sampler.borderColor;
  return image.at(static_cast<std::uint32_t>(ax), static_cast<std::uint32_t>(ay));
}

}  // namespace

Rgba sampleReference(const PassImage& image, const SamplerState& sampler, float u, float v) noexcept {
  if (image.width == 0 || image.height == 0) return sampler.borderColor;
  const double x = double{u} * image.width;
  const double y = double{v} * image.height;
  if (sampler.filter == SamplerFilter::Point) {
    return texel(image, sampler, static_cast<std::int64_t>(std::floor(x)), static_cast<std::int64_t>(std::floor(y)));
  }
  const double fx = x - 0.5;
  const double fy = y - 0.5;
  const auto x0 = static_cast<std::int64_t>(std::floor(fx));
  const auto y0 = static_cast<std::int64_t>(std::floor(fy));
  const double wx = fx - static_cast<double>(x0);
  const double wy = fy - static_cast<double>(y0);
  const Rgba a = texel(image, sampler, x0, y0);
  const Rgba b = texel(image, sampler, x0 + 1, y0);
  const Rgba c = texel(image, sampler, x0, y0 + 1);
  const Rgba d = texel(image, sampler, x0 + 1, y0 + 1);
  Rgba out;
  for (int i = 0; i < 4; ++i) {
    const double top = a[i] + (b[i] - a[i]) * wx;
    const double bottom = c[i] + (d[i] - c[i]) * wx;
    out[i] = static_cast<float>(top + (bottom - top) * wy);
  }
  return out;
}

}  // namespace Media
