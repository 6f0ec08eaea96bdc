#include "platform/ffmpeg/FfmpegVideoCodec.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

extern "C" {
#include <libavutil/pixdesc.h>
}

#include "media/BufferGeometry.h"
#include "media/riff/LittleEndian.h"
#include "platform/ffmpeg/Yuy2Packing.h"

namespace Platform {

namespace {

constexpr std::size_t kBitmapHeaderBytes = 40;
// Pictures kept for later reads. The one asked for is always the newest or within the
// decoder's delay of it; the rest serve reads in order after the last chunk, where the
// held-back pictures all come out at once. A walk from a key frame would otherwise hold
// every picture on the way.
constexpr std::size_t kMaxHeld = 8;

bool isYuvWithoutAlpha(AVPixelFormat format) {
  const AVPixFmtDescriptor* descriptor = av_pix_fmt_desc_get(format);
  return descriptor && (descriptor->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_ALPHA)) == 0;
}

// A bitmap's width or height, whose sign only says which row comes first.
int side(std::uint32_t field) {
  const std::int64_t value = std::abs(std::int64_t{static_cast<std::int32_t>(field)});
  return static_cast<int>(std::min<std::int64_t>(value, Media::kMaxBufferSide));
}

bool isFullRange(const AVFrame& frame) {
  switch (frame.format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ440P:
    case AV_PIX_FMT_YUVJ444P:
      return true;
    default:
      return frame.color_range == AVCOL_RANGE_JPEG;
  }
}

}  // namespace

std::unique_ptr<FfmpegVideoCodec> FfmpegVideoCodec::open(AVCodecID codecId, std::uint32_t code,
                                                         std::span<const std::byte> inputFormat,
                                                         std::span<const std::byte> sample) {
  const AVCodec* decoder = avcodec_find_decoder(codecId);
  if (!decoder || inputFormat.size() < kBitmapHeaderBytes) return nullptr;
  const std::span<const std::byte> extra = inputFormat.subspan(kBitmapHeaderBytes);
  Ffmpeg::CodecContextPtr context = Ffmpeg::allocateContext(decoder, extra.data(), extra.size());
  if (!context) return nullptr;
  context->codec_tag = code;
  context->width = side(Media::readLe32(inputFormat.data() + 4));
  context->height = side(Media::readLe32(inputFormat.data() + 8));
  context->bits_per_coded_sample = Media::readLe16(inputFormat.data() + 14);
  // Decoders refuse pictures that no texture could hold, before they allocate them.
  context->max_pixels = std::int64_t{Media::kMaxBufferSide} * Media::kMaxBufferSide;
  // One chunk in, one picture out: frame threads would hold pictures back.
  context->thread_count = 1;
  if (avcodec_open2(context.get(), decoder, nullptr) < 0) return nullptr;
  std::unique_ptr<FfmpegVideoCodec> codec(new FfmpegVideoCodec(std::move(context)));
  codec->native_ = codec->context_->pix_fmt;
  if (codec->native_ == AV_PIX_FMT_NONE && !sample.empty()) {
    codec->decode(sample, true);
    codec->finish();
    if (codec->last_) codec->native_ = static_cast<AVPixelFormat>(codec->last_->format);
    codec->reset(0);
  }
  return codec;
}

FfmpegVideoCodec::FfmpegVideoCodec(Ffmpeg::CodecContextPtr context)
    : context_(std::move(context)), packet_(av_packet_alloc()) {}

bool FfmpegVideoCodec::canOutput(const Media::BitmapInfoHeader& output) {
  switch (output.biBitCount) {
    case 16:
      return output.biCompression == Media::kFourccYuy2 && isYuvWithoutAlpha(native_);
    case 24:
    case 32:
      return output.biCompression == Media::kBiRgb;
    default:
      return false;
  }
}

void FfmpegVideoCodec::begin(const Media::BitmapInfoHeader& output) {
  output_ = output;
  outputFormat_ = output.biBitCount == 16 ? AV_PIX_FMT_YUYV422
                  : output.biBitCount == 32 ? AV_PIX_FMT_BGRA
                                            : AV_PIX_FMT_BGR24;
}

void FfmpegVideoCodec::reset(std::int64_t first) {
  avcodec_flush_buffers(context_.get());
  held_.clear();
  last_.reset();
  nextNumber_ = first;
  finished_ = false;
}

bool FfmpegVideoCodec::decode(std::span<const std::byte> chunk, bool keyFrame) {
  if (finished_) return false;
  if (chunk.empty() || !packet_ || av_new_packet(packet_.get(), static_cast<int>(chunk.size())) < 0) {
    repeatLast();
    return chunk.empty();
  }
  std::memcpy(packet_->data, chunk.data(), chunk.size());
  packet_->flags = keyFrame ? AV_PKT_FLAG_KEY : 0;
  const bool sent = send(packet_.get());
  av_packet_unref(packet_.get());
  // A refused chunk still takes its place, so that later pictures keep their numbers.
  if (!sent) repeatLast();
  return sent;
}

void FfmpegVideoCodec::finish() {
  if (finished_) return;
  send(nullptr);
  finished_ = true;
}

bool FfmpegVideoCodec::send(const AVPacket* packet) {
  if (avcodec_send_packet(context_.get(), packet) < 0) return false;
  for (;;) {
    Ffmpeg::FramePtr frame(av_frame_alloc());
    if (!frame || avcodec_receive_frame(context_.get(), frame.get()) < 0) return true;
    hold(std::move(frame));
  }
}

void FfmpegVideoCodec::hold(Ffmpeg::FramePtr frame) {
  last_.reset(av_frame_clone(frame.get()));
  held_.emplace_back(nextNumber_++, std::move(frame));
  if (held_.size() > kMaxHeld) held_.pop_front();
}

void FfmpegVideoCodec::repeatLast() {
  if (last_) {
    hold(Ffmpeg::FramePtr(av_frame_clone(last_.get())));
  } else {
    ++nextNumber_;
  }
}

bool FfmpegVideoCodec::holds(std::int64_t number) const {
  return std::any_of(held_.begin(), held_.end(), [&](const auto& entry) { return entry.first == number && entry.second; });
}

bool FfmpegVideoCodec::picture(std::int64_t number, std::span<std::byte> output) {
  while (!held_.empty() && held_.front().first < number) held_.pop_front();
  if (held_.empty() || held_.front().first != number || !held_.front().second) return false;
  return convert(*held_.front().second, output);
}

bool FfmpegVideoCodec::convert(const AVFrame& frame, std::span<std::byte> output) {
  const int width = output_.biWidth;
  const int height = output_.biHeight;
  const int stride = static_cast<int>((output_.biBitCount / 8 * static_cast<std::uint32_t>(width) + 3) / 4 * 4);
  if (output.size() < static_cast<std::size_t>(stride) * static_cast<std::size_t>(height)) return false;
  auto* base = reinterpret_cast<std::uint8_t*>(output.data());
  const bool toYuv = outputFormat_ == AV_PIX_FMT_YUYV422;
  if (toYuv && Ffmpeg::packYuv422(frame, base, static_cast<std::size_t>(stride), width, height)) return true;
  const auto source = static_cast<AVPixelFormat>(frame.format);
  scale_.reset(sws_getCachedContext(scale_.release(), frame.width, frame.height, source, width, height, outputFormat_,
                                    SWS_BILINEAR, nullptr, nullptr, nullptr));
  if (!scale_) return false;
  // The matrix and range of the picture; YUY2 keeps its matrix in limited range, RGB
  // takes full range.
  const int space = frame.colorspace == AVCOL_SPC_BT709 ? SWS_CS_ITU709 : SWS_CS_DEFAULT;
  sws_setColorspaceDetails(scale_.get(), sws_getCoefficients(space), isFullRange(frame) ? 1 : 0,
                           sws_getCoefficients(space), toYuv ? 0 : 1, 0, 1 << 16, 1 << 16);
  // RGB bitmaps keep their bottom row first.
  std::uint8_t* planes[4] = {toYuv ? base : base + std::size_t(stride) * std::size_t(height - 1), nullptr, nullptr,
                             nullptr};
  int strides[4] = {toYuv ? stride : -stride, 0, 0, 0};
  return sws_scale(scale_.get(), frame.data, frame.linesize, 0, frame.height, planes, strides) > 0;
}

}  // namespace Platform
