#include "platform/ffmpeg/FfmpegCodecProvider.h"

#include <cstdarg>
#include <mutex>

extern "C" {
#include <libavformat/avformat.h>
}

#include "platform/ffmpeg/FfmpegAudioCodec.h"
#include "platform/ffmpeg/FfmpegVideoCodec.h"
#include "system/Log.h"

namespace Platform {

namespace {

// libav's own complaints about damaged data go to the log at VERBOSE, not to standard
// error; each reader says what failed in its own words.
void logLine(void* object, int level, const char* format, va_list arguments) {
  if (level > AV_LOG_ERROR) return;
  char line[System::Log::kMessageCapacity];
  int prefix = 1;
  av_log_format_line2(object, level, format, arguments, line, sizeof(line), &prefix);
  System::Log::verbose("Platform::FfmpegCodecProvider", "%s", line);
}

AVCodecID codecOf(const AVCodecTag* table, std::uint32_t code) {
  const AVCodecTag* const tables[] = {table, nullptr};
  return av_codec_get_id(tables, code);
}

}  // namespace

FfmpegCodecProvider::FfmpegCodecProvider() {
  static std::once_flag logRouted;
  std::call_once(logRouted, [] { av_log_set_callback(logLine); });
}

std::unique_ptr<Media::VideoCodec> FfmpegCodecProvider::openVideo(std::uint32_t code,
                                                                  std::span<const std::byte> inputFormat,
                                                                  std::span<const std::byte> sample) {
  const AVCodecID id = codecOf(avformat_get_riff_video_tags(), code);
  if (id == AV_CODEC_ID_NONE) return nullptr;
  return FfmpegVideoCodec::open(id, code, inputFormat, sample);
}

std::unique_ptr<Media::AudioCodec> FfmpegCodecProvider::openAudio(const Media::WaveFormat& format) {
  const AVCodecID id = codecOf(avformat_get_riff_audio_tags(), format.codecTag);
  if (id == AV_CODEC_ID_NONE) return nullptr;
  return FfmpegAudioCodec::open(id, format);
}

}  // namespace Platform
