#include "media/Format.h"

#include <array>

namespace Media {

namespace {

constexpr std::array<FormatInfo, 11> kFormats{{
    {Format::Rgba16Float, "DXGI_FORMAT_R16G16B16A16_FLOAT", 8, "rgba16f"},
    {Format::Rgba16Unorm, "DXGI_FORMAT_R16G16B16A16_UNORM", 8, "rgba16"},
    {Format::Rgba16Snorm, "DXGI_FORMAT_R16G16B16A16_SNORM", 8, "rgba16_snorm"},
    {Format::Rg32Float, "DXGI_FORMAT_R32G32_FLOAT", 8, "rg32f"},
    {Format::Rgba8Unorm, "DXGI_FORMAT_R8G8B8A8_UNORM", 4, "rgba8"},
    {Format::R32Float, "DXGI_FORMAT_R32_FLOAT", 4, "r32f"},
    {Format::A8Unorm, "DXGI_FORMAT_A8_UNORM", 1, "rgba8"},
    {Format::Yuy2Packed, "DXGI_FORMAT_G8R8_G8B8_UNORM", 2, "rgba8"},
    {Format::Bgra8Unorm, "DXGI_FORMAT_B8G8R8A8_UNORM", 4, "rgba8"},
    {Format::Bgrx8Unorm, "DXGI_FORMAT_B8G8R8X8_UNORM", 4, "rgba8"},
    {Format::Yuy2, "DXGI_FORMAT_YUY2", 2, "rgba8"},
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
  return info ? static_cast<std::size_t>(info->bytesPerPixel) * width : 0;
}

}  // namespace Media
