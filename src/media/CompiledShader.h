// What a shader is once compiled: the GLSL 4.50 that the device links, and what
// reflection learned about it. Script shaders get this from Media::ShaderCompile; the
// built-in set states it by hand. The device reads the signature to choose how a pixel
// shader is drawn, and the bindings to put sources, samplers and constants in place.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Media {

enum class ShaderStage : std::uint8_t { Vertex, Pixel, Compute };

// The component types of a signature parameter, numbered as reflection reports them.
enum class ComponentType : std::uint8_t { Unknown = 0, UInt32 = 1, SInt32 = 2, Float32 = 3 };

// One input parameter of a shader's signature.
struct ShaderInputParameter {
  std::string semanticName;  // as written in the source, e.g. "SV_Position", "TEXCOORD"
  std::uint32_t semanticIndex = 0;
  std::uint8_t mask = 0;  // the components used: bit 0 x, bit 1 y, bit 2 z, bit 3 w
  ComponentType componentType = ComponentType::Unknown;
};

// A texture that the source reads, and where the device binds it. A texture read through
// a sampler becomes one combined sampler on its own unit; the sampler state of
// `samplerSlot` is bound to that unit.
struct ShaderTextureBinding {
  std::uint32_t textureSlot = 0;  // the t register of the source
  std::int32_t samplerSlot = -1;  // the s register it is sampled with; -1 for loads only
  std::uint32_t unit = 0;         // the texture unit of the GLSL
};

// A read-write image (u register) and its image unit.
struct ShaderImageBinding {
  std::uint32_t slot = 0;
  std::uint32_t unit = 0;
};

// A constant buffer (b register), flattened to an array of vec4 at a uniform block
// binding, so that its bytes keep the source's packing.
struct ShaderConstantBinding {
  std::uint32_t slot = 0;
  std::uint32_t binding = 0;
  std::uint32_t sizeInBytes = 0;  // a multiple of 16
};

struct CompiledShader {
  ShaderStage stage = ShaderStage::Pixel;
  std::string glsl;
  std::vector<ShaderInputParameter> inputs;
  std::vector<ShaderTextureBinding> textures;
  std::vector<ShaderImageBinding> images;
  std::vector<ShaderConstantBinding> constants;
  std::uint32_t threadGroupSize[3] = {1, 1, 1};  // compute shaders only
};

}  // namespace Media
