// The built-in reader of RIFF WAVE files (sound only); compressed formats are decoded
// by the program's decoders. Registered by the input service; open may run on any
// thread.
#pragma once

#include <memory>

#include "plugin/InputPlugin.h"

namespace Media {
class CodecProvider;
}

namespace Plugin {

class WaveFileReader : public InputPlugin {
 public:
  // Decodes through libavcodec.
  WaveFileReader();
  explicit WaveFileReader(std::shared_ptr<Media::CodecProvider> codecs);

  // Empty when the file is no WAV or its sound cannot be read.
  std::shared_ptr<InputFile> open(const std::wstring& fileName, std::uint32_t trackIndex) override;

 private:
  std::shared_ptr<Media::CodecProvider> codecs_;
};

}  // namespace Plugin
