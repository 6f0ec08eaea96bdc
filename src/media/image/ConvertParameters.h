// What an upload of a YUV image needs to know beyond its pixels: the colour space, by
// its place in the colour table, and the range of its 8-bit values. A read-back in a YUV
// format takes the same record from the output settings.
#pragma once

#include <cstdint>

namespace Media {

struct ConvertParameters {
  std::int32_t colorSpace = 0;  // 0: chosen by the image's height; else a table index plus 1
  bool fullRange = false;       // 8-bit YUV from 0 to 255 rather than 16 to 235 (240)
};

}  // namespace Media
