// The built-in reader of AVI 1.0 and OpenDML AVI 2 files, video and audio; compressed
// streams are decoded by the program's decoders. Registered by the input service; open
// may run on any thread.
#pragma once

#include <memory>

#include "plugin/InputPlugin.h"

namespace Media {
class CodecProvider;
}

namespace Plugin {

class AviFileReader : public InputPlugin {
 public:
  // Decodes through libavcodec.
  AviFileReader();
  explicit AviFileReader(std::shared_ptr<Media::CodecProvider> codecs);

  // Empty when the file is no AVI or neither of its streams can be read.
  std::shared_ptr<InputFile> open(const std::wstring& fileName, std::uint32_t trackIndex) override;

 private:
  std::shared_ptr<Media::CodecProvider> codecs_;
};

}  // namespace Plugin
