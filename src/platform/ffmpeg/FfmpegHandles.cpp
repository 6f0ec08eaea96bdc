#include "platform/ffmpeg/FfmpegHandles.h"

#include <climits>
#include <cstring>

namespace Platform::Ffmpeg {

CodecContextPtr allocateContext(const AVCodec* codec, const std::byte* extra, std::size_t extraSize) {
  CodecContextPtr context(avcodec_alloc_context3(codec));
  if (!context || extraSize == 0) return context;
  if (extraSize > INT_MAX - AV_INPUT_BUFFER_PADDING_SIZE) return nullptr;
  context->extradata = static_cast<std::uint8_t*>(av_mallocz(extraSize + AV_INPUT_BUFFER_PADDING_SIZE));
  if (!context->extradata) return nullptr;
  std::memcpy(context->extradata, extra, extraSize);
  context->extradata_size = static_cast<int>(extraSize);
  return context;
}

}  // namespace Platform::Ffmpeg
