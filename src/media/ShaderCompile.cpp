#include "media/ShaderCompile.h"

#include <algorithm>
#include <iterator>

#include "media/compile/CompileFailure.h"
#include "media/compile/GlslRewrite.h"
#include "media/compile/HlslToSpirv.h"
#include "media/compile/ShaderReflection.h"
#include "media/compile/SpirvCross.h"

namespace Media {

namespace {

struct Profile {
  const char* name;
  ShaderStage stage;
};

constexpr Profile kProfiles[] = {
    {"vs_5_0", ShaderStage::Vertex},
    {"ps_5_0", ShaderStage::Pixel},
    {"cs_5_0", ShaderStage::Compute},
};

ShaderStage stageOf(const std::string& profile) {
  const auto* found = std::find_if(std::begin(kProfiles), std::end(kProfiles),
                                   [&](const Profile& entry) { return profile == entry.name; });
  if (found == std::end(kProfiles)) Compile::throwCompileFailure("unsupported profile: " + profile);
  return found->stage;
}

}  // namespace

CompiledShader ShaderCompile::compileFromMemory(const std::string& name, const std::string& source,
                                                const std::string& entry, const std::string& profile,
                                                const std::vector<std::filesystem::path>& includeFolders) {
  CompiledShader shader;
  shader.stage = stageOf(profile);
  const Compile::SpirvModules modules = Compile::hlslToSpirv(name, source, entry, shader.stage, includeFolders);

  Compile::reflectInputs(Compile::SpirvCross(modules.signature), shader);

  Compile::SpirvCross cross(modules.code);
  Compile::bindTextures(cross, shader);
  Compile::bindImages(cross, shader);
  const std::vector<std::string> loaders = Compile::bindConstants(cross, shader);
  Compile::reflectThreadGroupSize(cross, shader);
  shader.glsl = Compile::rewriteGlsl(cross.compileGlsl(), shader, loaders);
  return shader;
}

}  // namespace Media
