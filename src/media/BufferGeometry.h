// Size and rectangle arithmetic of GPU buffers, apart from the GPU so that it can be
// checked alone: the side limit and the part of a source that a cropped copy moves.
#pragma once

#include <cstdint>
#include <optional>

namespace Media {

// The largest side of a texture. Larger requests are clamped, not refused: callers
// read the size back from the buffer.
inline constexpr std::uint32_t kMaxBufferSide = 16384;

constexpr std::uint32_t clampBufferSide(std::uint32_t side) noexcept {
  return side < kMaxBufferSide ? side : kMaxBufferSide;
}

// The region a cropped copy moves: from (sourceX, sourceY) of the source to
// (targetX, targetY) of the new buffer, width by height pixels.
struct CopyRegion {
  std::uint32_t sourceX = 0;
  std::uint32_t sourceY = 0;
  std::uint32_t targetX = 0;
  std::uint32_t targetY = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;

  bool operator==(const CopyRegion&) const = default;
};

// The crop of a source of sourceWidth by sourceHeight to a buffer of width by height
// whose top left lies at (x, y) of the source; x and y may be negative. Empty when the
// rectangle and the source do not overlap.
std::optional<CopyRegion> cropRegion(std::uint32_t sourceWidth, std::uint32_t sourceHeight, std::uint32_t width,
                                     std::uint32_t height, std::int32_t x, std::int32_t y) noexcept;

}  // namespace Media
