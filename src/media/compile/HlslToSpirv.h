// The first step of a script shader's compile: HLSL through glslang's HLSL front end to
// SPIR-V. Registers keep their numbers as bindings, cbuffers keep HLSL packing and every
// input keeps its semantic as written, so the later steps can reflect on the SPIR-V.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "media/CompiledShader.h"

namespace Media::Compile {

struct SpirvModules {
  // Straight from the front end: every parameter of the entry point is still there,
  // used or not, as the signature needs.
  std::vector<std::uint32_t> signature;
  // Legalized for a consumer; unused inputs and resources are gone.
  std::vector<std::uint32_t> code;
};

// Compiles `source` with `entry` as the entry point for `stage`. `name` appears in the
// compiler's messages and places the source: `#include` looks beside it, inside
// `includeFolders` only. Errors and warnings alike throw through throwCompileFailure.
// Any thread may call.
SpirvModules hlslToSpirv(const std::string& name, const std::string& source, const std::string& entry,
                         ShaderStage stage, const std::vector<std::filesystem::path>& includeFolders);

}  // namespace Media::Compile
