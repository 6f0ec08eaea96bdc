#include "platform/egl_gl/GlPipelineStates.h"

#include <array>

namespace Platform {

namespace {

using Media::BlendFactor;

// Indexed by Media::BlendFactor. The constant colour stands for the blend factor; used
// as the alpha factor, GL takes the constant's alpha, which is what the table means.
constexpr std::array<GLenum, 16> kBlendFactors{
    GL_ZERO,           GL_ONE,
    GL_SRC_COLOR,      GL_ONE_MINUS_SRC_COLOR,
    GL_SRC_ALPHA,      GL_ONE_MINUS_SRC_ALPHA,
    GL_DST_ALPHA,      GL_ONE_MINUS_DST_ALPHA,
    GL_DST_COLOR,      GL_ONE_MINUS_DST_COLOR,
    GL_CONSTANT_COLOR, GL_ONE_MINUS_CONSTANT_COLOR,
    GL_SRC1_COLOR,     GL_ONE_MINUS_SRC1_COLOR,
    GL_SRC1_ALPHA,     GL_ONE_MINUS_SRC1_ALPHA,
};

// Indexed by Media::BlendOp, which counts from 1.
constexpr std::array<GLenum, 6> kBlendOps{GL_FUNC_ADD, GL_FUNC_ADD, GL_FUNC_SUBTRACT, GL_FUNC_REVERSE_SUBTRACT,
                                          GL_MIN,      GL_MAX};

GLint glAddress(Media::AddressMode mode) {
  switch (mode) {
    case Media::AddressMode::Border:
      return GL_CLAMP_TO_BORDER;
    case Media::AddressMode::Clamp:
      return GL_CLAMP_TO_EDGE;
    case Media::AddressMode::Wrap:
      return GL_REPEAT;
    case Media::AddressMode::Mirror:
      return GL_MIRRORED_REPEAT;
  }
  return GL_CLAMP_TO_EDGE;
}

}  // namespace

GLenum glBlendFactor(Media::BlendFactor factor) noexcept { return kBlendFactors[static_cast<std::size_t>(factor)]; }

GLenum glBlendOp(Media::BlendOp op) noexcept { return kBlendOps[static_cast<std::size_t>(op)]; }

void applyBlendState(const Media::BlendStateDesc& state, const float (&factor)[4]) {
  if (!state.enable) {
    glDisable(GL_BLEND);
    return;
  }
  glEnable(GL_BLEND);
  glBlendFuncSeparate(glBlendFactor(state.src), glBlendFactor(state.dest), glBlendFactor(state.srcAlpha),
                      glBlendFactor(state.destAlpha));
  glBlendEquationSeparate(glBlendOp(state.op), glBlendOp(state.opAlpha));
  glBlendColor(factor[0], factor[1], factor[2], factor[3]);
}

void applyRasterizerState(const Media::RasterizerState& state) {
  glPolygonMode(GL_FRONT_AND_BACK, state.fill == Media::FillMode::Wireframe ? GL_LINE : GL_FILL);
  if (state.cull == Media::CullMode::Back) {
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
  } else {
    glDisable(GL_CULL_FACE);
  }
}

GLuint createSampler(const Media::SamplerState& state) {
  GLuint sampler = 0;
  glCreateSamplers(1, &sampler);
  // Only the top mip is ever read.
  const GLint filter = state.filter == Media::SamplerFilter::Point ? GL_NEAREST : GL_LINEAR;
  glSamplerParameteri(sampler, GL_TEXTURE_MIN_FILTER, filter);
  glSamplerParameteri(sampler, GL_TEXTURE_MAG_FILTER, filter);
  glSamplerParameterf(sampler, GL_TEXTURE_MIN_LOD, 0.0f);
  glSamplerParameterf(sampler, GL_TEXTURE_MAX_LOD, 0.0f);
  glSamplerParameteri(sampler, GL_TEXTURE_WRAP_S, glAddress(state.addressU));
  glSamplerParameteri(sampler, GL_TEXTURE_WRAP_T, glAddress(state.addressV));
  glSamplerParameteri(sampler, GL_TEXTURE_WRAP_R, glAddress(state.addressW));
  glSamplerParameterfv(sampler, GL_TEXTURE_BORDER_COLOR, state.borderColor.data());
  return sampler;
}

}  // namespace Platform
