// YUY2 rows straight from planar 8-bit 4:2:2 pictures, the form MJPEG decoders give,
// without libswscale's general path, which a change of range (JPEG's full range to the
// limited range of YUY2) forces on it at twice the cost of the decoding itself.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {
#include <libavutil/frame.h>
}

namespace Platform::Ffmpeg {

// Writes `frame` as YUY2 rows of `stride` bytes when it is planar 8-bit 4:2:2 of exactly
// `width` x `height`; a full-range picture is brought to limited range. False, writing
// nothing, for any other picture.
bool packYuv422(const AVFrame& frame, std::uint8_t* output, std::size_t stride, int width, int height);

}  // namespace Platform::Ffmpeg
