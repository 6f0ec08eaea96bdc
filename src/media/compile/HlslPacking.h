// The constant buffer layout of HLSL, laid over a cbuffer's SPIR-V struct. glslang's
// HLSL offsets come close but pad the last element of an array to a full register;
// scripts fill constant buffers as flat floats, so every offset must be the HLSL one.
#pragma once

#include <cstdint>

#include "media/compile/SpirvCross.h"

namespace Media::Compile {

// Sets the Offset of every member of `structType` (and of nested structs, and the
// ArrayStride of arrays) by the HLSL packing rules: nothing straddles a 16-byte
// register, arrays, matrix columns and structs start a register, each array element
// takes whole registers, and a struct ends its last register. Returns the size in bytes,
// a multiple of 16.
std::uint32_t packHlslConstants(const SpirvCross& cross, spvc_type_id structType);

}  // namespace Media::Compile
