#include "support/FfmpegEncode.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

namespace PluginTest {

namespace {

struct Encoder {
  explicit Encoder(const char* name)
      : codec(avcodec_find_encoder_by_name(name)), context(avcodec_alloc_context3(codec)) {
    if (!codec || !context || !frame || !packet) throw std::runtime_error(std::string("no encoder ") + name);
  }
  ~Encoder() {
    av_packet_free(&packet);
    av_frame_free(&frame);
    avcodec_free_context(&context);
  }
  void open() {
    if (avcodec_open2(context, codec, nullptr) < 0) throw std::runtime_error("encoder does not open");
  }
  // Sends `input` (null: the end) and appends what comes out.
  void encode(const AVFrame* input, std::vector<EncodedChunk>& packets) {
    if (avcodec_send_frame(context, input) < 0) throw std::runtime_error("encoder refused a frame");
    while (avcodec_receive_packet(context, packet) >= 0) {
      packets.push_back({std::string(reinterpret_cast<const char*>(packet->data), static_cast<std::size_t>(packet->size)),
                         (packet->flags & AV_PKT_FLAG_KEY) != 0});
      av_packet_unref(packet);
    }
  }

  const AVCodec* codec;
  AVCodecContext* context;
  AVFrame* frame = av_frame_alloc();
  AVPacket* packet = av_packet_alloc();
};

}  // namespace

bool hasEncoder(const char* name) { return avcodec_find_encoder_by_name(name) != nullptr; }

std::vector<EncodedChunk> encodeVideo(const char* name, int width, int height, int frames,
                                      const std::function<std::uint8_t(int, int, int)>& luma, int quantiser,
                                      int bFrames) {
  Encoder encoder(name);
  const AVPixelFormat format = std::strcmp(name, "mjpeg") == 0 ? AV_PIX_FMT_YUVJ422P : AV_PIX_FMT_YUV420P;
  encoder.context->width = width;
  encoder.context->height = height;
  encoder.context->pix_fmt = format;
  encoder.context->time_base = AVRational{1, 25};
  encoder.context->framerate = AVRational{25, 1};
  encoder.context->flags |= AV_CODEC_FLAG_QSCALE;
  encoder.context->qmin = encoder.context->qmax = quantiser;
  encoder.context->max_b_frames = bFrames;
  encoder.context->gop_size = 8;
  av_opt_set(encoder.context->priv_data, "crf", "12", 0);
  encoder.open();
  AVFrame* frame = encoder.frame;
  frame->width = width;
  frame->height = height;
  frame->format = format;
  if (av_frame_get_buffer(frame, 0) < 0) throw std::runtime_error("no frame buffer");
  const AVPixFmtDescriptor* descriptor = av_pix_fmt_desc_get(format);
  const int chromaWidth = -((-width) >> descriptor->log2_chroma_w);
  const int chromaHeight = -((-height) >> descriptor->log2_chroma_h);
  std::vector<EncodedChunk> packets;
  for (int index = 0; index < frames; ++index) {
    av_frame_make_writable(frame);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) frame->data[0][y * frame->linesize[0] + x] = luma(index, x, y);
    }
    for (int plane = 1; plane < 3; ++plane) {
      for (int y = 0; y < chromaHeight; ++y) std::memset(frame->data[plane] + y * frame->linesize[plane], 128, chromaWidth);
    }
    frame->pts = index;
    frame->quality = FF_QP2LAMBDA * quantiser;
    encoder.encode(frame, packets);
  }
  encoder.encode(nullptr, packets);
  return packets;
}

EncodedSound encodeSound(const char* name, const std::vector<double>& samples, int sampleRate) {
  Encoder encoder(name);
  const AVSampleFormat format = encoder.codec->sample_fmts[0];
  encoder.context->sample_fmt = format;
  encoder.context->sample_rate = sampleRate;
  encoder.context->bit_rate = 64000;
  av_channel_layout_default(&encoder.context->ch_layout, 1);
  encoder.open();
  AVFrame* frame = encoder.frame;
  frame->nb_samples = encoder.context->frame_size;
  frame->format = format;
  av_channel_layout_default(&frame->ch_layout, 1);
  if (av_frame_get_buffer(frame, 0) < 0) throw std::runtime_error("no frame buffer");
  std::vector<EncodedChunk> packets;
  for (std::size_t start = 0; start < samples.size(); start += static_cast<std::size_t>(frame->nb_samples)) {
    av_frame_make_writable(frame);
    for (int i = 0; i < frame->nb_samples; ++i) {
      const std::size_t at = start + static_cast<std::size_t>(i);
      const double value = at < samples.size() ? samples[at] : 0.0;
      // Mono: planar and interleaved forms lay the samples out alike.
      switch (av_get_packed_sample_fmt(format)) {
        case AV_SAMPLE_FMT_S16:
          reinterpret_cast<std::int16_t*>(frame->data[0])[i] = static_cast<std::int16_t>(value * 32767);
          break;
        case AV_SAMPLE_FMT_S32:
          reinterpret_cast<std::int32_t*>(frame->data[0])[i] = static_cast<std::int32_t>(value * 2147483647.0);
          break;
        case AV_SAMPLE_FMT_FLT:
          reinterpret_cast<float*>(frame->data[0])[i] = static_cast<float>(value);
          break;
        default:
          throw std::runtime_error("encoder takes an unexpected sample format");
      }
    }
    frame->pts = static_cast<std::int64_t>(start);
    encoder.encode(frame, packets);
  }
  encoder.encode(nullptr, packets);
  EncodedSound sound;
  for (const EncodedChunk& packet : packets) sound.data += packet.data;
  sound.blockAlign = encoder.context->block_align;
  sound.samplesPerBlock = encoder.context->frame_size;
  sound.bitRate = static_cast<int>(encoder.context->bit_rate);
  return sound;
}

}  // namespace PluginTest
