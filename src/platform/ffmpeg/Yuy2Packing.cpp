#include "platform/ffmpeg/Yuy2Packing.h"

#include <array>
#include <cmath>

namespace Platform::Ffmpeg {

namespace {

struct RangeTables {
  std::array<std::uint8_t, 256> luma;
  std::array<std::uint8_t, 256> chroma;
};

// Full range to limited: 0..255 to 16..235 for luma, 16..240 about 128 for chroma.
const RangeTables& fullToLimited() {
  static const RangeTables tables = [] {
    RangeTables made{};
    for (int v = 0; v < 256; ++v) {
      made.luma[static_cast<std::size_t>(v)] = static_cast<std::uint8_t>(std::lround(16 + v * 219.0 / 255.0));
      made.chroma[static_cast<std::size_t>(v)] = static_cast<std::uint8_t>(std::lround(128 + (v - 128) * 224.0 / 255.0));
    }
    return made;
  }();
  return tables;
}

template <bool FullRange>
void pack(const AVFrame& frame, std::uint8_t* output, std::size_t stride, int width, int height) {
  const RangeTables& tables = fullToLimited();
  const auto luma = [&](std::uint8_t v) { return FullRange ? tables.luma[v] : v; };
  const auto chroma = [&](std::uint8_t v) { return FullRange ? tables.chroma[v] : v; };
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* lumaRow = frame.data[0] + static_cast<std::ptrdiff_t>(y) * frame.linesize[0];
    const std::uint8_t* cbRow = frame.data[1] + static_cast<std::ptrdiff_t>(y) * frame.linesize[1];
    const std::uint8_t* crRow = frame.data[2] + static_cast<std::ptrdiff_t>(y) * frame.linesize[2];
    std::uint8_t* out = output + static_cast<std::size_t>(y) * stride;
    for (int x = 0; x < width; x += 2) {
      out[0] = luma(lumaRow[x]);
      out[1] = chroma(cbRow[x / 2]);
      // An odd width ends in a block whose second pixel repeats the first.
      out[2] = luma(lumaRow[x + 1 < width ? x + 1 : x]);
      out[3] = chroma(crRow[x / 2]);
      out += 4;
    }
  }
}

}  // namespace

bool packYuv422(const AVFrame& frame, std::uint8_t* output, std::size_t stride, int width, int height) {
  const bool jpeg = frame.format == AV_PIX_FMT_YUVJ422P;
  if ((!jpeg && frame.format != AV_PIX_FMT_YUV422P) || frame.width != width || frame.height != height) return false;
  if (jpeg || frame.color_range == AVCOL_RANGE_JPEG) {
    pack<true>(frame, output, stride, width, height);
  } else {
    pack<false>(frame, output, stride, width, height);
  }
  return true;
}

}  // namespace Platform::Ffmpeg
