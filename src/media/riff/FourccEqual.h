// How readers compare the four-character codes of streams and chunks: letters match
// in either case, and "DIB " (or NUL and "DIB") names the same uncompressed bitmap as 0.
#pragma once

#include <cstdint>

#include "media/image/BitmapInfoHeader.h"

namespace Media {

namespace Detail {

constexpr std::uint32_t upperFourcc(std::uint32_t code) noexcept {
  std::uint32_t result = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    std::uint32_t byte = code >> shift & 0xFF;
    if (byte >= 'a' && byte <= 'z') byte -= 'a' - 'A';
    result |= byte << shift;
  }
  const std::uint32_t nulDib = std::uint32_t{'D'} << 8 | std::uint32_t{'I'} << 16 | std::uint32_t{'B'} << 24;
  return result == fourcc("DIB ") || result == nulDib ? 0 : result;
}

}  // namespace Detail

constexpr bool fourccEqual(std::uint32_t a, std::uint32_t b) noexcept {
  return Detail::upperFourcc(a) == Detail::upperFourcc(b);
}

}  // namespace Media
