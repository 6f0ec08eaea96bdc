// What reflection learns from a script shader's SPIR-V, and the renaming and rebinding
// that makes SPIRV-Cross's GLSL match it: combined samplers on their own texture units,
// images on the unit of their u register, constant buffers as arrays of registers
// at the binding of their b register. Runs between parsing the SPIR-V and writing the GLSL.
#pragma once

#include <string>
#include <vector>

#include "media/CompiledShader.h"
#include "media/compile/SpirvCross.h"

namespace Media::Compile {

// The names the GLSL gives the resources, so the text can be found again afterwards.
std::string imageName(std::uint32_t slot);
std::string constantBufferName(std::uint32_t slot);

// The input signature, in the order the source declares it.
void reflectInputs(const SpirvCross& cross, CompiledShader& shader);

// Pairs every texture with the samplers it is used with (a texture that is only loaded
// gets a dummy sampler, recorded as sampler slot -1) and gives each pair a unit.
void bindTextures(const SpirvCross& cross, CompiledShader& shader);

void bindImages(const SpirvCross& cross, CompiledShader& shader);

// Lays each cbuffer out by HLSL packing. Returns, for each entry it adds to
// `shader.constants`, the GLSL that declares the buffer and loads it.
std::vector<std::string> bindConstants(const SpirvCross& cross, CompiledShader& shader);

void reflectThreadGroupSize(const SpirvCross& cross, CompiledShader& shader);

}  // namespace Media::Compile
