// A video decoder of libavcodec behind the program's VideoCodec: pictures are numbered
// in the order the decoder hands them out, which is display order, and converted by
// libswscale into the bitmap form the reader chose. Used by one thread at a time.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <utility>

#include "media/codec/VideoCodec.h"
#include "platform/ffmpeg/FfmpegHandles.h"

namespace Platform {

class FfmpegVideoCodec final : public Media::VideoCodec {
 public:
  // A decoder of `codecId` for a stream described by `inputFormat` (BITMAPINFOHEADER
  // and extra bytes); `sample`, the first chunk, tells what the pictures are when the
  // decoder cannot say before it has seen one. Empty when the decoder does not open.
  static std::unique_ptr<FfmpegVideoCodec> open(AVCodecID codecId, std::uint32_t code,
                                                std::span<const std::byte> inputFormat,
                                                std::span<const std::byte> sample);

  bool canOutput(const Media::BitmapInfoHeader& output) override;
  void begin(const Media::BitmapInfoHeader& output) override;
  void reset(std::int64_t first) override;
  bool decode(std::span<const std::byte> chunk, bool keyFrame) override;
  void finish() override;
  int reorderDelay() const override { return context_->has_b_frames; }
  std::int64_t nextPicture() const override { return nextNumber_; }
  bool holds(std::int64_t number) const override;
  bool picture(std::int64_t number, std::span<std::byte> output) override;

 private:
  explicit FfmpegVideoCodec(Ffmpeg::CodecContextPtr context);
  bool send(const AVPacket* packet);
  void hold(Ffmpeg::FramePtr frame);
  void repeatLast();
  bool convert(const AVFrame& frame, std::span<std::byte> output);

  Ffmpeg::CodecContextPtr context_;
  Ffmpeg::PacketPtr packet_;
  Ffmpeg::ScalePtr scale_;
  AVPixelFormat native_ = AV_PIX_FMT_NONE;
  Media::BitmapInfoHeader output_;
  AVPixelFormat outputFormat_ = AV_PIX_FMT_NONE;
  std::deque<std::pair<std::int64_t, Ffmpeg::FramePtr>> held_;
  Ffmpeg::FramePtr last_;  // the newest picture out, which a dropped frame repeats
  std::int64_t nextNumber_ = 0;
  bool finished_ = false;
};

}  // namespace Platform
