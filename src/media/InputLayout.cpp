#include "media/InputLayout.h"

namespace Media {

std::uint32_t inputComponentCount(std::uint8_t mask, const std::string& semanticName) noexcept {
  if (mask == 0 || mask > 15) return 0;
  if (mask == 1) return 1;
  if (mask < 4) return 2;
  if (mask < 8) return 3;
  return semanticName == "POSITION" || semanticName == "NORMAL" ? 3 : 4;
}

std::vector<InputElement> inputLayoutFor(const std::vector<ShaderInputParameter>& inputs) {
  std::vector<InputElement> layout;
  layout.reserve(inputs.size());
  std::uint32_t offset = 0;
  for (std::uint32_t i = 0; i < inputs.size(); ++i) {
    const ShaderInputParameter& input = inputs[i];
    InputElement element{input.semanticName,
                         input.semanticIndex,
                         i,
                         inputComponentCount(input.mask, input.semanticName),
                         input.componentType,
                         offset};
    if (input.componentType == ComponentType::Unknown) element.componentCount = 0;
    offset += element.componentCount * 4;
    layout.push_back(std::move(element));
  }
  return layout;
}

std::uint32_t inputLayoutStride(const std::vector<InputElement>& layout) noexcept {
  return layout.empty() ? 0 : layout.back().offset + layout.back().componentCount * 4;
}

}  // namespace Media
