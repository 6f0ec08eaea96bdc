// The blend modes a user selects (the integer `blend` of passes 24 and 25) on the CPU.
// Colours are premultiplied. Modes 0 to 12 give a colour meant to be drawn source-over
// (blend state 0); modes 20 to 23 give the pixel that replaces the frame's, meant to be
// drawn without blending (state 4). Any other number draws as mode 0.
#pragma once

#include <cstdint>

#include "media/reference/PassImage.h"

namespace Media {

// `source` is the drawn pixel, `frame` the frame's pixel under it, `opacity` the `alpha`
// of the draw. Returns false where the pixel is discarded: a source alpha below 0.001
// in every mode but 0.
bool blendModeReference(std::int32_t mode, float opacity, const Rgba& source, const Rgba& frame, Rgba& out) noexcept;

}  // namespace Media
