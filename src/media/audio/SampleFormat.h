// The sample format tags of interleaved sound, as WAVE files and AVI streams carry them:
// shared by the bytes a block is made from and the bytes a buffer is converted into.
#pragma once

#include <cstdint>

namespace Media {

enum class SampleFormat : std::uint32_t { Pcm = 1, Float = 3 };

}  // namespace Media
