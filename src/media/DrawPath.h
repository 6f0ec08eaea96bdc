// How a pixel shader is drawn over a whole frame, chosen from its input signature: with
// positions only, with positions and texture coordinates, or not at all (the caller
// brings its own vertices).
#pragma once

#include <cstdint>
#include <vector>

#include "media/CompiledShader.h"

namespace Media {

enum class DrawPath : std::uint8_t { None, Position, PositionTexCoord };

DrawPath drawPathFor(const std::vector<ShaderInputParameter>& inputs) noexcept;

}  // namespace Media
