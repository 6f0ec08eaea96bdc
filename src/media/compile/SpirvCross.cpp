#include "media/compile/SpirvCross.h"

#include "media/compile/CompileFailure.h"

namespace Media::Compile {

SpirvCross::SpirvCross(const std::vector<std::uint32_t>& spirv) {
  spvc_context context = nullptr;
  if (spvc_context_create(&context) != SPVC_SUCCESS) throwCompileFailure("spvc_context_create");
  context_.reset(context);
  spvc_parsed_ir ir = nullptr;
  check(spvc_context_parse_spirv(context, spirv.data(), spirv.size(), &ir));
  check(spvc_context_create_compiler(context, SPVC_BACKEND_GLSL, ir, SPVC_CAPTURE_MODE_TAKE_OWNERSHIP, &compiler_));
  check(spvc_compiler_create_shader_resources(compiler_, &resources_));
}

void SpirvCross::check(spvc_result result) const {
  if (result != SPVC_SUCCESS) throwCompileFailure(spvc_context_get_last_error_string(context_.get()));
}

std::vector<spvc_reflected_resource> SpirvCross::resources(spvc_resource_type type) const {
  const spvc_reflected_resource* list = nullptr;
  std::size_t count = 0;
  check(spvc_resources_get_resource_list_for_type(resources_, type, &list, &count));
  return {list, list + count};
}

std::vector<spvc_reflected_builtin_resource> SpirvCross::builtinInputs() const {
  const spvc_reflected_builtin_resource* list = nullptr;
  std::size_t count = 0;
  check(spvc_resources_get_builtin_resource_list_for_type(resources_, SPVC_BUILTIN_RESOURCE_TYPE_STAGE_INPUT, &list,
                                                          &count));
  return {list, list + count};
}

std::uint32_t SpirvCross::binding(spvc_variable_id id, std::uint32_t fallback) const {
  if (!spvc_compiler_has_decoration(compiler_, id, SpvDecorationBinding)) return fallback;
  return spvc_compiler_get_decoration(compiler_, id, SpvDecorationBinding);
}

std::string SpirvCross::compileGlsl() {
  spvc_compiler_options options = nullptr;
  check(spvc_compiler_create_compiler_options(compiler_, &options));
  check(spvc_compiler_options_set_uint(options, SPVC_COMPILER_OPTION_GLSL_VERSION, 450));
  check(spvc_compiler_options_set_bool(options, SPVC_COMPILER_OPTION_GLSL_ES, SPVC_FALSE));
  check(spvc_compiler_options_set_bool(options, SPVC_COMPILER_OPTION_GLSL_VULKAN_SEMANTICS, SPVC_FALSE));
  // The device sets glClipControl(GL_UPPER_LEFT, GL_ZERO_TO_ONE): clip space, depth
  // range and window y already run as the source expects, so nothing is flipped.
  check(spvc_compiler_options_set_bool(options, SPVC_COMPILER_OPTION_FLIP_VERTEX_Y, SPVC_FALSE));
  check(spvc_compiler_options_set_bool(options, SPVC_COMPILER_OPTION_FIXUP_DEPTH_CONVENTION, SPVC_FALSE));
  // cbuffers keep HLSL packing, which no block layout expresses; they come out as plain
  // struct uniforms, and rewriting loads them from registers.
  check(spvc_compiler_options_set_bool(options, SPVC_COMPILER_OPTION_GLSL_EMIT_UNIFORM_BUFFER_AS_PLAIN_UNIFORMS,
                                       SPVC_TRUE));
  check(spvc_compiler_install_compiler_options(compiler_, options));
  const char* text = nullptr;
  check(spvc_compiler_compile(compiler_, &text));
  return text;
}

}  // namespace Media::Compile
