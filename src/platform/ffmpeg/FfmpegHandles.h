// Owning pointers for the objects of libavcodec, libswscale and libswresample, so that
// every way out of a decoder's code frees them.
#pragma once

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

namespace Platform::Ffmpeg {

struct CodecContextFree {
  void operator()(AVCodecContext* p) const noexcept { avcodec_free_context(&p); }
};
struct FrameFree {
  void operator()(AVFrame* p) const noexcept { av_frame_free(&p); }
};
struct PacketFree {
  void operator()(AVPacket* p) const noexcept { av_packet_free(&p); }
};
struct ParserFree {
  void operator()(AVCodecParserContext* p) const noexcept { av_parser_close(p); }
};
struct ScaleFree {
  void operator()(SwsContext* p) const noexcept { sws_freeContext(p); }
};
struct ResampleFree {
  void operator()(SwrContext* p) const noexcept { swr_free(&p); }
};

using CodecContextPtr = std::unique_ptr<AVCodecContext, CodecContextFree>;
using FramePtr = std::unique_ptr<AVFrame, FrameFree>;
using PacketPtr = std::unique_ptr<AVPacket, PacketFree>;
using ParserPtr = std::unique_ptr<AVCodecParserContext, ParserFree>;
using ScalePtr = std::unique_ptr<SwsContext, ScaleFree>;
using ResamplePtr = std::unique_ptr<SwrContext, ResampleFree>;

// A decoder context for `codec` with the extra bytes of a file's format block, which
// libavcodec wants padded with zeros; empty when it cannot be made.
CodecContextPtr allocateContext(const AVCodec* codec, const std::byte* extra, std::size_t extraSize);

}  // namespace Platform::Ffmpeg
