#include "media/compile/ShaderReflection.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "media/compile/ConstantBufferLoader.h"
#include "media/compile/HlslPacking.h"

namespace Media::Compile {

namespace {

// System values arrive as builtins; reflection names them as HLSL spells them, since
// glslang keeps a semantic only in capitals.
struct BuiltinSemantic {
  SpvBuiltIn builtin;
  const char* name;
};

constexpr BuiltinSemantic kBuiltinSemantics[] = {
    {SpvBuiltInFragCoord, "SV_Position"},         {SpvBuiltInFrontFacing, "SV_IsFrontFace"},
    {SpvBuiltInSampleId, "SV_SampleIndex"},       {SpvBuiltInPrimitiveId, "SV_PrimitiveID"},
    {SpvBuiltInVertexIndex, "SV_VertexID"},       {SpvBuiltInInstanceIndex, "SV_InstanceID"},
};

ComponentType toComponentType(spvc_basetype type) {
  switch (type) {
    case SPVC_BASETYPE_FP32:
      return ComponentType::Float32;
    case SPVC_BASETYPE_INT32:
      return ComponentType::SInt32;
    case SPVC_BASETYPE_UINT32:
    case SPVC_BASETYPE_BOOLEAN:
      return ComponentType::UInt32;
    default:
      return ComponentType::Unknown;
  }
}

ShaderInputParameter makeInput(const SpirvCross& cross, const spvc_reflected_resource& resource,
                               std::string semantic) {
  const spvc_type type = spvc_compiler_get_type_handle(cross.compiler(), resource.base_type_id);
  ShaderInputParameter input;
  // A trailing number of a semantic is its index: TEXCOORD1 is TEXCOORD, index 1.
  std::size_t digits = semantic.size();
  while (digits > 0 && std::isdigit(static_cast<unsigned char>(semantic[digits - 1]))) --digits;
  if (digits < semantic.size()) input.semanticIndex = static_cast<std::uint32_t>(std::stoul(semantic.substr(digits)));
  semantic.resize(digits);
  input.semanticName = std::move(semantic);
  input.mask = static_cast<std::uint8_t>((1u << spvc_type_get_vector_size(type)) - 1);
  input.componentType = toComponentType(spvc_type_get_basetype(type));
  return input;
}

}  // namespace

std::string imageName(std::uint32_t slot) { return "sorvel_u" + std::to_string(slot); }

std::string constantBufferName(std::uint32_t slot) { return "sorvel_b" + std::to_string(slot); }

void reflectInputs(const SpirvCross& cross, CompiledShader& shader) {
  if (shader.stage == ShaderStage::Compute) return;
  spvc_compiler compiler = cross.compiler();
  // glslang makes one variable per parameter in declaration order, so ids give the
  // order of the signature across plain inputs and builtins alike.
  std::vector<std::pair<spvc_variable_id, ShaderInputParameter>> inputs;
  for (const spvc_reflected_resource& resource : cross.resources(SPVC_RESOURCE_TYPE_STAGE_INPUT)) {
    const char* semantic = spvc_compiler_get_decoration_string(compiler, resource.id, SpvDecorationUserSemantic);
    inputs.emplace_back(resource.id, makeInput(cross, resource, semantic));
  }
  for (const spvc_reflected_builtin_resource& builtin : cross.builtinInputs()) {
    std::string semantic = spvc_compiler_get_decoration_string(compiler, builtin.resource.id,
                                                               SpvDecorationUserSemantic);
    const auto* known = std::find_if(std::begin(kBuiltinSemantics), std::end(kBuiltinSemantics),
                                     [&](const BuiltinSemantic& entry) { return entry.builtin == builtin.builtin; });
    if (known != std::end(kBuiltinSemantics)) semantic = known->name;
    inputs.emplace_back(builtin.resource.id, makeInput(cross, builtin.resource, std::move(semantic)));
  }
  std::sort(inputs.begin(), inputs.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& input : inputs) shader.inputs.push_back(std::move(input.second));
}

void bindTextures(const SpirvCross& cross, CompiledShader& shader) {
  spvc_compiler compiler = cross.compiler();
  // A texture that is only loaded still becomes a sampler2D in GLSL, paired with a
  // sampler that exists in no register.
  spvc_variable_id dummySampler = 0;
  cross.check(spvc_compiler_build_dummy_sampler_for_combined_images(compiler, &dummySampler));
  cross.check(spvc_compiler_build_combined_image_samplers(compiler));
  const spvc_combined_image_sampler* pairs = nullptr;
  std::size_t count = 0;
  cross.check(spvc_compiler_get_combined_image_samplers(compiler, &pairs, &count));

  struct Pair {
    spvc_variable_id combined;
    ShaderTextureBinding binding;
  };
  std::vector<Pair> sorted;
  for (std::size_t i = 0; i < count; ++i) {
    ShaderTextureBinding binding;
    binding.textureSlot = cross.binding(pairs[i].image_id);
    const bool loadOnly = dummySampler != 0 && pairs[i].sampler_id == dummySampler;
    binding.samplerSlot = loadOnly ? -1 : static_cast<std::int32_t>(cross.binding(pairs[i].sampler_id));
    sorted.push_back({pairs[i].combined_id, binding});
  }
  std::sort(sorted.begin(), sorted.end(), [](const Pair& a, const Pair& b) {
    return std::pair(a.binding.textureSlot, a.binding.samplerSlot) <
           std::pair(b.binding.textureSlot, b.binding.samplerSlot);
  });
  for (std::size_t unit = 0; unit < sorted.size(); ++unit) {
    ShaderTextureBinding& binding = sorted[unit].binding;
    binding.unit = static_cast<std::uint32_t>(unit);
    std::string name = "sorvel_t" + std::to_string(binding.textureSlot);
    if (binding.samplerSlot >= 0) name += "_s" + std::to_string(binding.samplerSlot);
    spvc_compiler_set_name(compiler, sorted[unit].combined, name.c_str());
    spvc_compiler_set_decoration(compiler, sorted[unit].combined, SpvDecorationBinding, binding.unit);
    shader.textures.push_back(binding);
  }
}

void bindImages(const SpirvCross& cross, CompiledShader& shader) {
  spvc_compiler compiler = cross.compiler();
  for (const spvc_reflected_resource& resource : cross.resources(SPVC_RESOURCE_TYPE_STORAGE_IMAGE)) {
    const std::uint32_t slot = cross.binding(resource.id);
    spvc_compiler_set_name(compiler, resource.id, imageName(slot).c_str());
    shader.images.push_back({slot, slot});
  }
}

std::vector<std::string> bindConstants(const SpirvCross& cross, CompiledShader& shader) {
  std::vector<std::string> loaders;
  for (const spvc_reflected_resource& resource : cross.resources(SPVC_RESOURCE_TYPE_UNIFORM_BUFFER)) {
    // Globals outside any cbuffer gather in one block with no register: b0, as the
    // scripts' constants expect.
    const std::uint32_t slot = cross.binding(resource.id, 0);
    const std::uint32_t size = packHlslConstants(cross, resource.base_type_id);
    const std::string name = constantBufferName(slot);
    spvc_compiler_set_name(cross.compiler(), resource.id, name.c_str());
    loaders.push_back(makeConstantBufferLoader(cross, resource.base_type_id, name, slot, size));
    shader.constants.push_back({slot, slot, size});
  }
  return loaders;
}

void reflectThreadGroupSize(const SpirvCross& cross, CompiledShader& shader) {
  if (shader.stage != ShaderStage::Compute) return;
  for (unsigned axis = 0; axis < 3; ++axis) {
    shader.threadGroupSize[axis] =
        spvc_compiler_get_execution_mode_argument_by_index(cross.compiler(), SpvExecutionModeLocalSize, axis);
  }
}

}  // namespace Media::Compile
