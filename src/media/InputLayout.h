// The vertex input layout that a vertex shader's signature asks for: one element per
// input parameter, all from vertex buffer slot 0, each placed right after the previous.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "media/CompiledShader.h"

namespace Media {

struct InputElement {
  std::string semanticName;
  std::uint32_t semanticIndex = 0;
  std::uint32_t location = 0;        // the shader's input location: its place in the signature
  std::uint32_t componentCount = 0;  // 0: a mask that maps to no format; the element reads nothing
  ComponentType componentType = ComponentType::Unknown;
  std::uint32_t offset = 0;  // bytes from the start of a vertex
};

// The components that an input of this mask reads from the vertex. A position or a
// normal declared with four components reads three; the shader sees w as 1.
std::uint32_t inputComponentCount(std::uint8_t mask, const std::string& semanticName) noexcept;

std::vector<InputElement> inputLayoutFor(const std::vector<ShaderInputParameter>& inputs);

// Bytes of one vertex of the layout.
std::uint32_t inputLayoutStride(const std::vector<InputElement>& layout) noexcept;

}  // namespace Media
