// How each image format of the program is stored in GL: the texture's internal format
// and the client format and type of its CPU image. Masks are stored as RGBA8 with the
// mask in alpha, so that blending that reads the target's alpha works unchanged; their
// CPU image holds the alpha bytes alone. Packed YUY2 is stored as RGBA8 at half width.
#pragma once

#include <GL/glcorearb.h>

#include <cstdint>

#include "media/Format.h"

namespace Platform {

struct GlFormat {
  Media::Format format;
  GLenum internalFormat;
  GLenum clientFormat;
  GLenum clientType;
  std::uint32_t widthDivisor;  // CPU pixels a texel holds
  bool alphaOnly;              // the CPU image holds alpha alone
  bool opaque;                 // alpha reads as 1 whatever is stored
};

// The entry of a format; throws for a format the program does not store on the GPU.
const GlFormat& glFormat(Media::Format format, const char* place);

// The texel width of a texture that holds `width` CPU pixels.
inline std::uint32_t texelWidth(const GlFormat& format, std::uint32_t width) noexcept {
  return (width + format.widthDivisor - 1) / format.widthDivisor;
}

}  // namespace Platform
