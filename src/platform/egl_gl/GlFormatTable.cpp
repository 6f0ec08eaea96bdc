#include "platform/egl_gl/GlFormatTable.h"

#include <array>

#include "system/Exception.h"

namespace Platform {

namespace {

using Media::Format;

constexpr std::array<GlFormat, 10> kFormats{{
    {Format::Rgba16Float, GL_RGBA16F, GL_RGBA, GL_HALF_FLOAT, 1, false, false},
    {Format::Rgba16Unorm, GL_RGBA16, GL_RGBA, GL_UNSIGNED_SHORT, 1, false, false},
    {Format::Rgba16Snorm, GL_RGBA16_SNORM, GL_RGBA, GL_SHORT, 1, false, false},
    {Format::Rg32Float, GL_RG32F, GL_RG, GL_FLOAT, 1, false, false},
    {Format::Rgba8Unorm, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 1, false, false},
    {Format::R32Float, GL_R32F, GL_RED, GL_FLOAT, 1, false, false},
    {Format::A8Unorm, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 1, true, false},
    {Format::Yuy2Packed, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 2, false, false},
    {Format::Bgra8Unorm, GL_RGBA8, GL_BGRA, GL_UNSIGNED_BYTE, 1, false, false},
    {Format::Bgrx8Unorm, GL_RGBA8, GL_BGRA, GL_UNSIGNED_BYTE, 1, false, true},
}};

// The GL error that an unknown format stands for.
constexpr std::uint32_t kInvalidEnum = GL_INVALID_ENUM;

}  // namespace

const GlFormat& glFormat(Media::Format format, const char* place) {
  for (const GlFormat& entry : kFormats) {
    if (entry.format == format) return entry;
  }
  throw System::HResultException("glTextureStorage2D", place, kInvalidEnum);
}

}  // namespace Platform
