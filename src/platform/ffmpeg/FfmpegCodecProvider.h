// The program's decoders of compressed AVI and WAV streams: libavcodec's, chosen by the
// FOURCC or wave format tag through libavformat's RIFF tables, so that MJPEG, H.264, DV,
// ADPCM or MP3 open without a plug-in. Holds nothing of its own; any thread may ask.
#pragma once

#include "media/codec/CodecProvider.h"

namespace Platform {

class FfmpegCodecProvider final : public Media::CodecProvider {
 public:
  FfmpegCodecProvider();

  std::unique_ptr<Media::VideoCodec> openVideo(std::uint32_t code, std::span<const std::byte> inputFormat,
                                               std::span<const std::byte> sample) override;
  std::unique_ptr<Media::AudioCodec> openAudio(const Media::WaveFormat& format) override;
};

}  // namespace Platform
