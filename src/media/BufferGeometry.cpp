#include "media/BufferGeometry.h"

#include <algorithm>

namespace Media {

namespace {

struct Span {
  std::uint32_t source;
  std::uint32_t target;
  std::uint32_t length;
};

// One axis of the crop, in 64-bit so that offsets near the limits cannot wrap.
std::optional<Span> cropAxis(std::uint32_t sourceLength, std::uint32_t length, std::int32_t offset) {
  const std::int64_t begin = std::max<std::int64_t>(offset, 0);
  const std::int64_t end = std::min<std::int64_t>(static_cast<std::int64_t>(offset) + length, sourceLength);
  if (end <= begin) return std::nullopt;
  return Span{static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(begin - offset),
              static_cast<std::uint32_t>(end - begin)};
}

}  // namespace

std::optional<CopyRegion> cropRegion(std::uint32_t sourceWidth, std::uint32_t sourceHeight, std::uint32_t width,
                                     std::uint32_t height, std::int32_t x, std::int32_t y) noexcept {
  const std::optional<Span> across = cropAxis(sourceWidth, width, x);
  const std::optional<Span> down = cropAxis(sourceHeight, height, y);
  if (!across || !down) return std::nullopt;
  return CopyRegion{across->source, down->source, across->target, down->target, across->length, down->length};
}

}  // namespace Media
