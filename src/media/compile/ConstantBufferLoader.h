// The GLSL side of a cbuffer. Its bytes follow HLSL packing, which no GLSL block layout
// can express (a float2 may start at byte 4), so the buffer is declared as an array of
// uvec4 registers and a loader function rebuilds the source's struct from them. The
// translator emits the cbuffer as a plain struct uniform; rewriting puts this in its place.
#pragma once

#include <cstdint>
#include <string>

#include "media/compile/SpirvCross.h"

namespace Media::Compile {

// Gives the cbuffer's struct type and members fixed names and drops the matrix layout
// decorations (the loader has read them), so that the GLSL the translator writes uses
// what the loader builds. Returns the GLSL that declares the uniform block of
// `sizeInBytes` at `binding`, the loader, and a macro that makes `variableName` call it.
// Call after packHlslConstants and before the GLSL is written.
std::string makeConstantBufferLoader(const SpirvCross& cross, spvc_type_id structType,
                                     const std::string& variableName, std::uint32_t binding,
                                     std::uint32_t sizeInBytes);

}  // namespace Media::Compile
