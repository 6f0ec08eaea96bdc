// An audio decoder of libavcodec behind the program's AudioCodec: the bytes of a file
// are cut into packets by the codec's parser where it has one, else into whole blocks
// of the format, and what comes out is resampled by libswresample to interleaved 16-bit
// PCM at the rate and channel count the file states. Used by one thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "media/codec/AudioCodec.h"
#include "media/codec/WaveFormat.h"
#include "platform/ffmpeg/FfmpegHandles.h"

namespace Platform {

class FfmpegAudioCodec final : public Media::AudioCodec {
 public:
  // Empty when the decoder does not open for `format`.
  static std::unique_ptr<FfmpegAudioCodec> open(AVCodecID codecId, const Media::WaveFormat& format);
  ~FfmpegAudioCodec() override { av_channel_layout_uninit(&resampleLayout_); }
  FfmpegAudioCodec(const FfmpegAudioCodec&) = delete;
  FfmpegAudioCodec& operator=(const FfmpegAudioCodec&) = delete;

  std::size_t decode(std::span<const std::byte> source, std::vector<std::byte>& output) override;
  void reset() override;

 private:
  FfmpegAudioCodec(Ffmpeg::CodecContextPtr context, const Media::WaveFormat& format);
  void decodePacket(const std::uint8_t* data, int size, std::vector<std::byte>& output);
  void resample(AVFrame& frame, std::vector<std::byte>& output);

  Ffmpeg::CodecContextPtr context_;
  Ffmpeg::ParserPtr parser_;
  Ffmpeg::PacketPtr packet_;
  Ffmpeg::FramePtr frame_;
  Ffmpeg::ResamplePtr resample_;
  int resampleFormat_ = -1;  // what resample_ was made for
  int resampleRate_ = 0;
  AVChannelLayout resampleLayout_{};
  std::uint16_t channels_;
  int sampleRate_;
  std::size_t packetBytes_;  // without a parser: whole blocks, about 4 KiB at a time
};

}  // namespace Platform
