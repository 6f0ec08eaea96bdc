// Fields of RIFF files, bitmaps and wave formats as they lie on disk: little-endian
// whatever the processor, read from bytes that need not be aligned.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Media {

inline std::uint16_t readLe16(const std::byte* p) noexcept {
  return static_cast<std::uint16_t>(static_cast<std::uint16_t>(p[0]) | static_cast<std::uint16_t>(p[1]) << 8);
}

inline std::uint32_t readLe32(const std::byte* p) noexcept {
  return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 |
         static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
}

inline std::uint64_t readLe64(const std::byte* p) noexcept {
  return std::uint64_t{readLe32(p)} | std::uint64_t{readLe32(p + 4)} << 32;
}

}  // namespace Media
