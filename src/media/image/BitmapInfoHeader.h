// The device-independent bitmap header in which codecs and plug-ins describe a frame,
// byte for byte as they write it, and the four-character codes of its compression field.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Media {

struct BitmapInfoHeader {
  std::uint32_t biSize = 40;
  std::int32_t biWidth = 0;
  std::int32_t biHeight = 0;
  std::uint16_t biPlanes = 1;
  std::uint16_t biBitCount = 0;
  std::uint32_t biCompression = 0;
  std::uint32_t biSizeImage = 0;
  std::int32_t biXPelsPerMeter = 0;
  std::int32_t biYPelsPerMeter = 0;
  std::uint32_t biClrUsed = 0;
  std::uint32_t biClrImportant = 0;
};

static_assert(sizeof(BitmapInfoHeader) == 40);
static_assert(offsetof(BitmapInfoHeader, biBitCount) == 14 && offsetof(BitmapInfoHeader, biCompression) == 16);

// A four-character code as it lies in a little-endian file: "YUY2" is 'Y' in the low byte.
constexpr std::uint32_t fourcc(const char (&code)[5]) noexcept {
  return static_cast<std::uint32_t>(static_cast<unsigned char>(code[0])) |
         static_cast<std::uint32_t>(static_cast<unsigned char>(code[1])) << 8 |
         static_cast<std::uint32_t>(static_cast<unsigned char>(code[2])) << 16 |
         static_cast<std::uint32_t>(static_cast<unsigned char>(code[3])) << 24;
}

inline constexpr std::uint32_t kBiRgb = 0;
inline constexpr std::uint32_t kFourccYuy2 = fourcc("YUY2");
inline constexpr std::uint32_t kFourccPa64 = fourcc("PA64");
inline constexpr std::uint32_t kFourccHf64 = fourcc("HF64");
inline constexpr std::uint32_t kFourccYc48 = fourcc("YC48");

}  // namespace Media
