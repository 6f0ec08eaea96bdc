// The GLSL 4.50 of the frame passes: each pass's arithmetic once, as the function
//   bool framePass(ivec2 pixel, vec2 uv, out vec4 color, out vec4 color1)
// with its sources and constants declared, and the blend equation of a blend state as
//   vec4 blendState(vec4 src, vec4 src1, vec4 dst, vec4 factor).
// FramePassShaders wraps them into the shaders of the draw and the compute path.
#pragma once

#include <cstdint>
#include <string>

#include "media/pass/FramePassTable.h"
#include "media/pass/TexelLayout.h"

namespace Media {

// Sources are `sampler2D source0, source1` at units 0 and 1, read by texelFetch at
// `pixel` (0 outside a source) through the layout of their texels, or sampled at `uv`
// for the passes that sample. The constants are the std140 block `c` at binding 0.
// `color1` is the second colour of dual-source blending. The function returns false
// where the pixel is discarded.
std::string framePassGlsl(FramePass pass, TexelLayout sources = TexelLayout::Rgba);

// The user's blend modes on premultiplied colour: `normalised`, `toYuv`, `fromYuv` and
// `bool blendMode(int mode, float opacity, vec4 source, vec4 frame, out vec4 color)`,
// shared by the passes that compose an image over the frame and by the surfaces.
std::string blendModeGlsl();

// The blend equation of state `blendState` (below kBlendStateCount), with the state's
// factors and ops written in as constants.
std::string blendEquationGlsl(std::uint32_t blendState);

// Whether the state reads the blend factor, so that a shader needs it bound at all.
bool blendStateUsesFactor(std::uint32_t blendState) noexcept;

}  // namespace Media
