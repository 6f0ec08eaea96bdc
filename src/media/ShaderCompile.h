// The compile step of the shaders that scripts bring: HLSL source in, GLSL 4.50 core
// and its reflection out. The shader classes derive from it; the script shader list
// calls it through them. Any thread may compile: nothing here touches the device.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "media/CompiledShader.h"

namespace Media {

class ShaderCompile {
 public:
  // Compiles `source` up to its end, with `entry` as the entry point, for the profile
  // "ps_5_0", "cs_5_0" or "vs_5_0". `name` is what the compiler's messages call the
  // source. A compile failure, a warning (warnings count as errors) or an unknown
  // profile throws System::NoteException "D3DCompile() failed" with the place
  // "Media::ShaderCompile::compileFromMemory" and the compiler's text as its note.
  //
  // The GLSL binds each texture/sampler pair of `textures` to its unit, each image to
  // the unit of its u register, each cbuffer to the uniform block binding of its b
  // register (a buffer of at least `sizeInBytes`). Each image's format qualifier is the
  // token SORVEL_IMAGE_FORMAT_<unit>, which the device defines after the #version line
  // for the texture it binds there.
  //
  // `#include "file"` and `#include <file>` are read beside the including file, the
  // first level beside `name` (a path, with either separator). Only files inside
  // `includeFolders` (the script folders) are read; any other, or one that cannot be
  // read, fails the compile with the reason in the compiler's text.
  static CompiledShader compileFromMemory(const std::string& name, const std::string& source,
                                          const std::string& entry, const std::string& profile,
                                          const std::vector<std::filesystem::path>& includeFolders = {});

 protected:
  ShaderCompile() = default;
  ~ShaderCompile() = default;
};

}  // namespace Media
