// How the AVI reader turns the chunks of a video stream into bitmaps: uncompressed
// streams (no handler, "DIB ", YUY2, PA64, HF64) as they lie, any other through a
// decoder that gives YUY2, 32-bit RGB or 24-bit RGB, the first of them it can. Owned by
// one open file; its reads hold that file's video lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "media/Format.h"
#include "media/codec/VideoCodec.h"
#include "media/image/BitmapInfoHeader.h"

namespace Media {

class CodecProvider;

class VideoDecompressor {
 public:
  // `inputFormat` is the stream's format block (a BITMAPINFOHEADER and what follows);
  // `sample` its first chunk. False when the stream gives no picture the program takes:
  // a size outside 1 to 16384, an uncompressed form without a pixel format, or no
  // decoder that gives one of the three forms.
  bool setup(CodecProvider& provider, std::uint32_t handler, std::vector<std::byte> inputFormat,
             std::span<const std::byte> sample);

  Format pixelFormat() const noexcept { return pixelFormat_; }
  std::uint32_t width() const noexcept { return static_cast<std::uint32_t>(output_.biWidth); }
  std::uint32_t height() const noexcept { return static_cast<std::uint32_t>(output_.biHeight); }
  // The bitmap that the chunks (uncompressed) or the pictures (decoded) are.
  const BitmapInfoHeader& outputHeader() const noexcept { return output_; }
  // Null for an uncompressed stream.
  VideoCodec* codec() noexcept { return codec_.get(); }

  // Writes decoded picture `number` into the output; false when the decoder does not
  // hold it, which leaves the output as it was.
  bool takePicture(std::int64_t number);
  // The last picture taken; empty before the first.
  std::span<const std::byte> output() const noexcept { return outputBytes_; }

 private:
  bool setupDecoder(CodecProvider& provider, std::uint32_t handler, std::span<const std::byte> sample);

  std::vector<std::byte> inputFormat_;
  BitmapInfoHeader output_;
  Format pixelFormat_ = Format::Unknown;
  std::unique_ptr<VideoCodec> codec_;
  // Grown at the first picture a decoder makes, not when the stream is opened, so a
  // header alone never sizes it.
  std::vector<std::byte> outputBytes_;
};

}  // namespace Media
