// The fixed pipeline states in GL terms: blend factors and operations, sampler objects
// and the rasterizer switches. GPU thread only.
#pragma once

#include <GL/glcorearb.h>

#include "media/RasterizerStateTable.h"
#include "media/SamplerStateTable.h"
#include "media/pass/BlendStateTable.h"

namespace Platform {

GLenum glBlendFactor(Media::BlendFactor factor) noexcept;
GLenum glBlendOp(Media::BlendOp op) noexcept;

void applyBlendState(const Media::BlendStateDesc& state, const float (&factor)[4]);
void applyRasterizerState(const Media::RasterizerState& state);
// A sampler object of the state; the caller owns it.
GLuint createSampler(const Media::SamplerState& state);

}  // namespace Platform
