// The blend equation on the CPU, as the fixed-function blender of a GPU evaluates it:
// result = src * Fs op dst * Fd per channel, colour with the colour factors and alpha
// with the alpha factors. The compute path's GLSL and the GPU checks are held to it.
#pragma once

#include "media/pass/BlendStateTable.h"
#include "media/reference/PassImage.h"

namespace Media {

// `src1` is the second output of the pass (dual-source factors read it), `factor` the
// blend factor of the draw. Min and Max ignore the factors. A disabled state gives `src`.
Rgba blendReference(const BlendStateDesc& state, const Rgba& src, const Rgba& src1, const Rgba& dst,
                    const Rgba& factor) noexcept;

}  // namespace Media
