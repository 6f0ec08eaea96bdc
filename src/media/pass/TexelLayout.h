// How the texels of a texture hold the pixels a pass reads or writes. Conversions of CPU
// images move their bytes to and from the GPU as they lie, and let the pass put the
// channels in order, because a format conversion inside an upload or a read-back costs
// far more than the pass.
#pragma once

#include <cstdint>

namespace Media {

enum class TexelLayout : std::uint8_t {
  Rgba,        // one pixel a texel, as the texture's format gives it
  Bgra,        // one pixel a texel whose bytes are B, G, R, A
  PackedYuy2,  // two pixels a texel, bytes Y0, U, Y1, V; a pixel reads (U, Y, V, 1)
};

}  // namespace Media
