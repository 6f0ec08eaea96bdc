// The full shaders of the frame passes, built from the one GLSL function of each pass:
// the fragment shader of the draw path, the compute shader that applies a blend state
// itself, and a fused compute shader that composes several layers source-over in one
// read and one write of the target. The device picks the path that is faster on it;
// all give the same pixels within rounding.
#pragma once

#include <cstdint>

#include "media/CompiledShader.h"
#include "media/pass/FramePassTable.h"
#include "media/pass/TexelLayout.h"

namespace Media {

// Threads of a compute group on each axis: dispatch ceil(width / 16) by ceil(height / 16).
inline constexpr std::uint32_t kFramePassGroupSize = 16;

// The most layers one fused composition reads; the guaranteed number of texture units of
// a compute shader.
inline constexpr std::uint32_t kMaxFusedLayers = 16;

// Draw path: the fragment shader of a full-frame pass. Its signature is "SV_Position",
// plus "TEXCOORD" (two floats at `layout(location = 0)`) for the passes that sample.
// Pass 7 writes its two colours as index 0 and 1 of location 0, for dual-source
// blending. The blend state is the draw's fixed-function state.
CompiledShader framePassPixelShader(FramePass pass);
// The same with the texels of the sources, and of the target, in another layout: a
// packed YUY2 target takes Y of two pixels, and Cb and Cr of the first, per texel.
CompiledShader framePassPixelShader(FramePass pass, TexelLayout sources, TexelLayout target);

// Compute path: runs the pass over image unit 0 (`SORVEL_IMAGE_FORMAT_0`, the target,
// read and written) and applies blend state `blendState` in the shader. States that read
// the blend factor take it from a 16-byte block at binding 1 (constants slot 1, a vec4).
// Texture coordinates are the pixel centres over the target's size. Meant for float
// targets: unlike fixed-function blending into a normalised target, sources and factors
// are not clamped before blending.
CompiledShader framePassComputeShader(FramePass pass, std::uint32_t blendState);

// `layerCount` layers (1 to kMaxFusedLayers) at texture units 0 and up, composed over
// image unit 0 source-over, layer 0 first: the same as that many pass 2 draws under blend
// state 0, with one read and one write of the target. Layers read 0 outside their size.
CompiledShader sourceOverComputeShader(std::uint32_t layerCount);

}  // namespace Media
