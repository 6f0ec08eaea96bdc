#include "plugin/WaveFileReader.h"

#include "platform/ffmpeg/FfmpegCodecProvider.h"
#include "plugin/WaveFileInput.h"

namespace Plugin {

WaveFileReader::WaveFileReader() : WaveFileReader(std::make_shared<Platform::FfmpegCodecProvider>()) {}

WaveFileReader::WaveFileReader(std::shared_ptr<Media::CodecProvider> codecs)
    : InputPlugin(L"Wave File Reader", {L"WavFile (*.wav)", L"*.wav"},
                  L"RIFF WAVE files. Compressed formats are decoded by libavcodec.", Kind::Audio),
      codecs_(std::move(codecs)) {}

std::shared_ptr<InputFile> WaveFileReader::open(const std::wstring& fileName, std::uint32_t) {
  // What fails is logged where it fails; the reader refuses and the next one may try.
  try {
    auto file = std::make_shared<WaveFileInput>(fileName, *codecs_);
    if (file->hasAudio()) return file;
  } catch (const std::exception&) {
  }
  return nullptr;
}

}  // namespace Plugin
