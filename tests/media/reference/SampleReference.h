// A texture read through a sampler state on the CPU: nearest or bilinear filtering of
// the top mip at normalised coordinates, with the address modes and border colour of
// the state. The passes that sample (11, 19, 23) are checked against it.
#pragma once

#include "media/SamplerStateTable.h"
#include "media/reference/PassImage.h"

namespace Media {

// Texel centres lie at (i + 0.5) / size, as on the GPU; bilinear weights are exact here,
// where a GPU may round them to a few bits, so compare at coordinates whose weights are
// short binary fractions.
Rgba sampleReference(const PassImage& image, const SamplerState& sampler, float u, float v) noexcept;

}  // namespace Media
