// The image formats of the program, numbered as the device's format numbers always were,
// so that configuration values and stored numbers keep their meaning. The GPU back end
// maps each to its own storage in one table of its own.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Media {

enum class Format : std::uint32_t {
  Unknown = 0,
  Rgba16Float = 10,  // the default pixel format: a frame's colour
  Rgba16Unorm = 11,  // 16-bit images
  Rgba16Snorm = 13,  // YC48 images
  Rg32Float = 16,    // shadow maps
  Rgba8Unorm = 28,   // 32-bit images
  R32Float = 41,     // depth buffers
  A8Unorm = 65,      // masks
  Yuy2Packed = 69,   // YUY2 data on the GPU: one texel holds two pixels
  Bgra8Unorm = 87,   // 32-bit images
  Bgrx8Unorm = 88,   // 32-bit images without alpha
  Yuy2 = 107,        // YUY2 data in a CPU image; uploaded as Yuy2Packed
};

struct FormatInfo {
  Format format;
  const char* name;              // the name that logs and bug reports use
  std::uint32_t bytesPerBlock;   // of the CPU image: what an upload reads and a read-back writes
  std::uint32_t pixelsPerBlock;  // YUY2 keeps two pixels in one four-byte block
  const char* imageQualifier;    // how a shader declares it as a read-write image
};

// The entry of a known format; nullptr for a number outside the table.
const FormatInfo* findFormat(std::uint32_t number) noexcept;
const FormatInfo* findFormat(Format format) noexcept;

// Bytes of one tight row of a CPU image; 0 for an unknown format. A YUY2 row of odd
// width ends in a whole block, its second pixel padding.
std::size_t rowBytes(Format format, std::uint32_t width) noexcept;

// A mask holds alpha alone: it reads as (0, 0, 0, a) whatever is drawn or cleared into it.
constexpr bool isAlphaOnly(Format format) noexcept { return format == Format::A8Unorm; }

}  // namespace Media
