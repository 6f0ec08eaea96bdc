// The GLSL and signatures of the plain pairs of the 3D drawing set: the textured and
// the coloured surface. SurfaceShaders loads them; the units and the binding below are
// where its draws put the sources and the constants.
#pragma once

#include <cstdint>

#include "media/CompiledShader.h"

namespace Media {

// `texture0`, read through the sampler state bound with it.
inline constexpr std::uint32_t kSurfaceTextureUnit = 0;
// `frameBuffer`, the copy of the target, read by pixel where the blend mode isn't 0.
inline constexpr std::uint32_t kSurfaceFrameUnit = 1;
// The block `Constant` (a SurfaceConstants), read by both stages.
inline constexpr std::uint32_t kSurfaceConstantBinding = 0;

// Both vertex shaders read an XYZ_UV or XYZ_COL record: a position of three floats and
// four floats handed on to the pixel shader, and place it by `projection`.
CompiledShader texturedSurfaceVertexShader();
CompiledShader coloredSurfaceVertexShader();

// The texture read with minification (one sample, or up to 16 by 16 taps over the
// pixel's footprint), composed with the frame by `blend`, times the vertex's alpha
// factor (the third float of its texture data) and `alpha`.
CompiledShader texturedSurfacePixelShader();
// The vertex colour, straight alpha, premultiplied here, composed with the frame by
// `blend`, times `alpha`.
CompiledShader coloredSurfacePixelShader();

}  // namespace Media
