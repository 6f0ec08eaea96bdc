// The last touches on the translator's GLSL that no translator option gives: cbuffers
// become register arrays with their loaders, and read-write images take their format
// from a token that the device defines for the texture bound at run time.
#pragma once

#include <string>
#include <vector>

#include "media/CompiledShader.h"

namespace Media::Compile {

// The token that stands for an image's format qualifier, e.g. SORVEL_IMAGE_FORMAT_0.
std::string imageFormatToken(std::uint32_t unit);

// `loaders` are bindConstants' texts, one for each of `shader.constants`.
std::string rewriteGlsl(const std::string& glsl, const CompiledShader& shader, const std::vector<std::string>& loaders);

}  // namespace Media::Compile
