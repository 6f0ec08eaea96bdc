// Where the readers of AVI and WAV files get decoders for compressed streams, by the
// codes those files use (FOURCC, wave format tag). The program's provider decodes inside
// the program; tests give their own. Any thread may ask.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "media/codec/AudioCodec.h"
#include "media/codec/VideoCodec.h"

namespace Media {

struct WaveFormat;

class CodecProvider {
 public:
  virtual ~CodecProvider() = default;

  // A decoder of the video chunks that `code` names, described by `inputFormat` (the
  // stream's BITMAPINFOHEADER and what follows it). `sample` is the stream's first
  // chunk, from which a decoder may learn what its pictures are; it may be empty. Empty
  // when nothing decodes that code.
  virtual std::unique_ptr<VideoCodec> openVideo(std::uint32_t code, std::span<const std::byte> inputFormat,
                                                std::span<const std::byte> sample) = 0;
  // A decoder of `format` to 16-bit PCM, or empty when nothing decodes it.
  virtual std::unique_ptr<AudioCodec> openAudio(const WaveFormat& format) = 0;
};

}  // namespace Media
