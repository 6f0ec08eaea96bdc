#include "support/FfmpegEncode.h"

#include <stdexcept>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace PluginTest {

namespace {

struct Encoder {
  explicit Encoder(AVCodecID id) : codec(avcodec_find_encoder(id)), context(avcodec_alloc_context3(codec)) {
    if (!codec || !context || !frame || !packet) throw std::runtime_error("no encoder");
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
  void encode(const AVFrame* input, std::vector<std::string>& packets) {
    if (avcodec_send_frame(context, input) < 0) throw std::runtime_error("encoder refused a frame");
    while (avcodec_receive_packet(context, packet) >= 0) {
      packets.emplace_back(reinterpret_cast<const char*>(packet->data), static_cast<std::size_t>(packet->size));
      av_packet_unref(packet);
    }
  }

  const AVCodec* codec;
  AVCodecContext* context;
  AVFrame* frame = av_frame_alloc();
  AVPacket* packet = av_packet_alloc();
};

}  // namespace

std::vector<std::string> encodeMjpeg(int width, int height, int frames,
                                     const std::function<std::uint8_t(int, int, int)>& luma, int quantiser) {
  Encoder encoder(AV_CODEC_ID_MJPEG);
  encoder.context->width = width;
  encoder.context->height = height;
  encoder.context->pix_fmt = AV_PIX_FMT_YUVJ422P;
  encoder.context->time_base = AVRational{1, 30};
  encoder.context->flags |= AV_CODEC_FLAG_QSCALE;
  encoder.context->qmin = encoder.context->qmax = quantiser;
  encoder.open();
  AVFrame* frame = encoder.frame;
  frame->width = width;
  frame->height = height;
  frame->format = AV_PIX_FMT_YUVJ422P;
  if (av_frame_get_buffer(frame, 0) < 0) throw std::runtime_error("no frame buffer");
  std::vector<std::string> packets;
  for (int index = 0; index < frames; ++index) {
    av_frame_make_writable(frame);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) frame->data[0][y * frame->linesize[0] + x] = luma(index, x, y);
      for (int x = 0; x < (width + 1) / 2; ++x) {
        frame->data[1][y * frame->linesize[1] + x] = 128;
        frame->data[2][y * frame->linesize[2] + x] = 128;
      }
    }
    frame->pts = index;
    frame->quality = FF_QP2LAMBDA * quantiser;
    encoder.encode(frame, packets);
  }
  encoder.encode(nullptr, packets);
  return packets;
}

AdpcmStream encodeImaAdpcm(const std::vector<std::int16_t>& samples, int sampleRate) {
  Encoder encoder(AV_CODEC_ID_ADPCM_IMA_WAV);
  encoder.context->sample_fmt = encoder.codec->sample_fmts[0];
  encoder.context->sample_rate = sampleRate;
  av_channel_layout_default(&encoder.context->ch_layout, 1);
  encoder.open();
  AVFrame* frame = encoder.frame;
  frame->nb_samples = encoder.context->frame_size;
  frame->format = encoder.context->sample_fmt;
  av_channel_layout_default(&frame->ch_layout, 1);
  if (av_frame_get_buffer(frame, 0) < 0) throw std::runtime_error("no frame buffer");
  std::vector<std::string> packets;
  for (std::size_t start = 0; start < samples.size(); start += static_cast<std::size_t>(frame->nb_samples)) {
    av_frame_make_writable(frame);
    auto* out = reinterpret_cast<std::int16_t*>(frame->data[0]);
    for (int i = 0; i < frame->nb_samples; ++i) {
      const std::size_t at = start + static_cast<std::size_t>(i);
      out[i] = at < samples.size() ? samples[at] : 0;
    }
    encoder.encode(frame, packets);
  }
  encoder.encode(nullptr, packets);
  AdpcmStream stream;
  for (const std::string& packet : packets) stream.data += packet;
  stream.blockAlign = encoder.context->block_align;
  stream.samplesPerBlock = encoder.context->frame_size;
  return stream;
}

}  // namespace PluginTest
