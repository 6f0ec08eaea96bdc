#include "platform/ffmpeg/FfmpegAudioCodec.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "system/Exception.h"

namespace Platform {

namespace {

constexpr std::size_t kPacketBytes = 4096;
constexpr const char* kPlace = "Media::AudioDecompressor::decode";

}  // namespace

std::unique_ptr<FfmpegAudioCodec> FfmpegAudioCodec::open(AVCodecID codecId, const Media::WaveFormat& format) {
  const AVCodec* decoder = avcodec_find_decoder(codecId);
  if (!decoder) return nullptr;
  Ffmpeg::CodecContextPtr context = Ffmpeg::allocateContext(decoder, format.extra.data(), format.extra.size());
  if (!context) return nullptr;
  context->codec_tag = format.codecTag;
  context->sample_rate = static_cast<int>(format.sampleRate);
  av_channel_layout_default(&context->ch_layout, format.channels);
  context->block_align = format.blockAlign;
  context->bit_rate = std::int64_t{format.avgBytesPerSec} * 8;
  context->bits_per_coded_sample = format.bitsPerSample;
  if (avcodec_open2(context.get(), decoder, nullptr) < 0) return nullptr;
  std::unique_ptr<FfmpegAudioCodec> codec(new FfmpegAudioCodec(std::move(context), format));
  if (!codec->packet_ || !codec->frame_) return nullptr;
  return codec;
}

FfmpegAudioCodec::FfmpegAudioCodec(Ffmpeg::CodecContextPtr context, const Media::WaveFormat& format)
    : context_(std::move(context)),
      parser_(av_parser_init(context_->codec_id)),
      packet_(av_packet_alloc()),
      frame_(av_frame_alloc()),
      channels_(format.channels),
      sampleRate_(static_cast<int>(format.sampleRate)) {
  const std::size_t block = std::max<std::size_t>(format.blockAlign, 1);
  packetBytes_ = std::max(kPacketBytes / block, std::size_t{1}) * block;
}

void FfmpegAudioCodec::reset() {
  avcodec_flush_buffers(context_.get());
  if (parser_) parser_.reset(av_parser_init(context_->codec_id));
  resample_.reset();
}

std::size_t FfmpegAudioCodec::decode(std::span<const std::byte> source, std::vector<std::byte>& output) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(source.data());
  std::size_t used = 0;
  if (parser_) {
    // The parser keeps a packet not yet whole inside itself, so every byte counts as used.
    while (used < source.size()) {
      std::uint8_t* data = nullptr;
      int size = 0;
      const int length = static_cast<int>(std::min<std::size_t>(source.size() - used, INT_MAX));
      const int taken = av_parser_parse2(parser_.get(), context_.get(), &data, &size, bytes + used, length,
                                         AV_NOPTS_VALUE, AV_NOPTS_VALUE, 0);
      if (taken < 0) break;
      used += static_cast<std::size_t>(taken);
      if (size > 0) decodePacket(data, size, output);
      if (taken == 0 && size == 0) break;
    }
    return source.size();
  }
  // Without a parser only whole blocks go in; a partial one waits for the next call.
  const std::size_t block = std::max<std::size_t>(static_cast<std::size_t>(std::max(context_->block_align, 1)), 1);
  while (source.size() - used >= block) {
    const std::size_t size = std::min(packetBytes_, (source.size() - used) / block * block);
    decodePacket(bytes + used, static_cast<int>(size), output);
    used += size;
  }
  return used;
}

void FfmpegAudioCodec::decodePacket(const std::uint8_t* data, int size, std::vector<std::byte>& output) {
  if (av_new_packet(packet_.get(), size) < 0) throw System::NoteException(kPlace, "av_new_packet failed.");
  std::memcpy(packet_->data, data, static_cast<std::size_t>(size));
  const int sent = avcodec_send_packet(context_.get(), packet_.get());
  av_packet_unref(packet_.get());
  // Damaged data costs its packet only.
  if (sent == AVERROR_INVALIDDATA) return;
  if (sent < 0) throw System::NoteException(kPlace, "avcodec_send_packet failed.", L"error = %d", sent);
  while (avcodec_receive_frame(context_.get(), frame_.get()) >= 0) {
    resample(*frame_, output);
    av_frame_unref(frame_.get());
  }
}

void FfmpegAudioCodec::resample(AVFrame& frame, std::vector<std::byte>& output) {
  if (!resample_ || frame.format != resampleFormat_ || frame.sample_rate != resampleRate_ ||
      av_channel_layout_compare(&frame.ch_layout, &resampleLayout_) != 0) {
    AVChannelLayout target{};
    av_channel_layout_default(&target, channels_);
    SwrContext* context = nullptr;
    const int made = swr_alloc_set_opts2(&context, &target, AV_SAMPLE_FMT_S16, sampleRate_, &frame.ch_layout,
                                         static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    resample_.reset(context);
    av_channel_layout_uninit(&target);
    if (made < 0 || swr_init(resample_.get()) < 0) {
      throw System::NoteException(kPlace, "swr_init failed.", L"format = %d, rate = %d", frame.format,
                                  frame.sample_rate);
    }
    resampleFormat_ = frame.format;
    resampleRate_ = frame.sample_rate;
    av_channel_layout_uninit(&resampleLayout_);
    av_channel_layout_copy(&resampleLayout_, &frame.ch_layout);
  }
  const int room = swr_get_out_samples(resample_.get(), frame.nb_samples);
  if (room <= 0) return;
  const std::size_t frameBytes = std::size_t{channels_} * 2;
  const std::size_t before = output.size();
  output.resize(before + static_cast<std::size_t>(room) * frameBytes);
  auto* out = reinterpret_cast<std::uint8_t*>(output.data() + before);
  const int made = swr_convert(resample_.get(), &out, room, const_cast<const std::uint8_t**>(frame.extended_data),
                               frame.nb_samples);
  output.resize(before + static_cast<std::size_t>(std::max(made, 0)) * frameBytes);
}

}  // namespace Platform
