#include "media/Format.h"

#include <array>

namespace Media {

namespace {

constexpr std::array<FormatInfo, 11> kFormats{{
    {Format::Rgba16Float, "DXGI_FORMAT_R16G16B16A16_FLOAT", 8, 1, "rgba16f"},
    {Format::Rgba16Unorm, "DXGI_FORMAT_R16G16B16A16_UNORM", 8, 1, "rgba16"},
    {Format::Rgba16Snorm, "DXGI_FORMAT_R16G16B16A16_SNORM", 8, 1, "rgba16_snorm"},
    {Format::Rg32Float, "DXGI_FORMAT_R32G32_FLOAT", 8, 1, "rg32f"},
    {Format::Rgba8Unorm, "DXGI_FORMAT_R8G8B8A8_UNORM", 4, 1, "rgba8"},
    {Format::R32Float, "DXGI_FORMAT_R32_FLOAT", 4, 1, "r32f"},
    {Format::A8Unorm, "DXGI_FORMAT_A8_UNORM", 1, 1, "rgba8"},
    {Format::Yuy2Packed, "DXGI_FORMAT_G8R8_G8B8_UNORM", 4, 2, "rgba8"},
    {Format::Bgra8Unorm, "DXGI_FORMAT_B8G8R8A8_UNORM", 4, 1, "rgba8"},
    {Format::Bgrx8Unorm, "DXGI_FORMAT_B8G8R8X8_UNORM", 4, 1, "rgba8"},
    {Format::Yuy2, "DXGI_FORMAT_YUY2", 4, 2, "rgba8"},
}};

}  // namespace

const FormatInfo* findFormat(std::uint32_t number) noexcept {
  for (const FormatInfo& info : kFormats) {
    if (static_cast<std::uint32_t>(info.format) == number) return &info;
  }
  return nullptr;
}

const FormatInfo* findFormat(Format format) noexcept { return findFormat(static_cast<std::uint32_t>(format)); }

std::size_t rowBytes(Format format, std::uint32_t width) noexcept {
  const FormatInfo* info = findFormat(format);
  if (!info) return 0;
  const std::size_t blocks = (std::size_t{width} + info->pixelsPerBlock - 1) / info->pixelsPerBlock;
  return blocks * info->bytesPerBlock;
}

}  // namespace Media
