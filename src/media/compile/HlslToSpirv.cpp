#include "media/compile/HlslToSpirv.h"

#include <glslang/Public/ResourceLimits.h>
#include <glslang/Public/ShaderLang.h>
#include <glslang/SPIRV/GlslangToSpv.h>

#include <mutex>
#include <string_view>

#include "media/compile/CompileFailure.h"
#include "media/compile/ShaderIncluder.h"

namespace Media::Compile {

namespace {

// glslang keeps process-wide tables; they are built once and live until exit.
void initializeGlslang() {
  static std::once_flag once;
  std::call_once(once, [] { glslang::InitializeProcess(); });
}

EShLanguage toLanguage(ShaderStage stage) {
  switch (stage) {
    case ShaderStage::Vertex:
      return EShLangVertex;
    case ShaderStage::Pixel:
      return EShLangFragment;
    case ShaderStage::Compute:
      return EShLangCompute;
  }
  return EShLangFragment;
}

// The compiler of the design treats warnings as errors; glslang only reports them, so
// any "WARNING:" line in a log fails the compile just as an error does.
bool hasWarning(const char* log) { return std::string_view(log).find("WARNING:") != std::string_view::npos; }

std::vector<std::uint32_t> toSpirv(const glslang::TIntermediate& intermediate, bool legalize) {
  std::vector<std::uint32_t> spirv;
  spv::SpvBuildLogger logger;
  glslang::SpvOptions options;
  // HLSL often needs legalization (textures passed to functions, struct copies) before
  // a SPIR-V consumer accepts it; the optimizer then runs only its legalization passes.
  options.disableOptimizer = !legalize;
  glslang::GlslangToSpv(intermediate, spirv, &logger, &options);
  const std::string log = logger.getAllMessages();
  if (!log.empty()) throwCompileFailure(log);
  return spirv;
}

}  // namespace

SpirvModules hlslToSpirv(const std::string& name, const std::string& source, const std::string& entry,
                         ShaderStage stage, const std::vector<std::filesystem::path>& includeFolders) {
  initializeGlslang();
  const EShLanguage language = toLanguage(stage);

  glslang::TShader shader(language);
  const char* text = source.c_str();
  const int length = static_cast<int>(source.size());
  const char* fileName = name.c_str();
  shader.setStringsWithLengthsAndNames(&text, &length, &fileName, 1);
  shader.setEntryPoint(entry.c_str());
  // Vulkan-flavoured SPIR-V keeps textures and samplers apart, as HLSL has them;
  // SPIRV-Cross pairs them later for OpenGL.
  shader.setEnvInput(glslang::EShSourceHlsl, language, glslang::EShClientVulkan, 100);
  shader.setEnvClient(glslang::EShClientVulkan, glslang::EShTargetVulkan_1_0);
  shader.setEnvTarget(glslang::EShTargetSpv, glslang::EShTargetSpv_1_0);
  // Semantics travel as UserSemantic decorations.
  shader.setEnvTargetHlslFunctionality1();
  // Registers keep their numbers: t3 is binding 3 and so is b3; the class of a resource
  // tells them apart when the next step reflects.
  shader.setAutoMapBindings(false);
  shader.setAutoMapLocations(true);

  const auto messages = static_cast<EShMessages>(EShMsgSpvRules | EShMsgVulkanRules | EShMsgReadHlsl |
                                                 EShMsgHlslOffsets | EShMsgHlslLegalization);
  ShaderIncluder includer(includeFolders);
  if (!shader.parse(GetDefaultResources(), 100, false, messages, includer) || hasWarning(shader.getInfoLog())) {
    throwCompileFailure(std::string(shader.getInfoLog()) + shader.getInfoDebugLog());
  }
  glslang::TProgram program;
  program.addShader(&shader);
  if (!program.link(messages) || hasWarning(program.getInfoLog())) {
    throwCompileFailure(std::string(program.getInfoLog()) + program.getInfoDebugLog());
  }
  const glslang::TIntermediate& intermediate = *program.getIntermediate(language);
  return {toSpirv(intermediate, false), toSpirv(intermediate, true)};
}

}  // namespace Media::Compile
