#include "media/DrawPath.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace Media {

namespace {

// Semantics are matched without regard to case, as the shading language does.
bool isFloatNamed(const ShaderInputParameter& input, std::string_view name) {
  const std::string& semantic = input.semanticName;
  return input.componentType == ComponentType::Float32 && semantic.size() == name.size() &&
         std::equal(semantic.begin(), semantic.end(), name.begin(), [](char a, char b) {
           return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
         });
}

}  // namespace

DrawPath drawPathFor(const std::vector<ShaderInputParameter>& inputs) noexcept {
  if (inputs.size() == 1 && isFloatNamed(inputs[0], "SV_Position")) return DrawPath::Position;
  if (inputs.size() == 2 && isFloatNamed(inputs[0], "SV_Position") && isFloatNamed(inputs[1], "TEXCOORD")) {
    return DrawPath::PositionTexCoord;
  }
  return DrawPath::None;
}

}  // namespace Media
