#include "plugin/AviFileReader.h"

#include "platform/ffmpeg/FfmpegCodecProvider.h"
#include "plugin/AviFileInput.h"
#include "plugin/AviFileParse.h"

namespace Plugin {

AviFileReader::AviFileReader() : AviFileReader(std::make_shared<Platform::FfmpegCodecProvider>()) {}

AviFileReader::AviFileReader(std::shared_ptr<Media::CodecProvider> codecs)
    : InputPlugin(L"AVI/AVI2 File Reader", {L"AviFile (*.avi)", L"*.avi"},
                  L"AVI 1.0 and OpenDML AVI 2 files. Compressed streams are decoded by libavcodec.",
                  Kind::Video | Kind::Audio),
      codecs_(std::move(codecs)) {}

std::shared_ptr<InputFile> AviFileReader::open(const std::wstring& fileName, std::uint32_t) {
  // What fails is logged where it fails; the reader refuses and the next one may try.
  try {
    auto file = std::make_shared<AviFileInput>(fileName, AviFileParse::parse(fileName), *codecs_);
    if (file->hasVideo() || file->hasAudio()) return file;
  } catch (const std::exception&) {
  }
  return nullptr;
}

}  // namespace Plugin
