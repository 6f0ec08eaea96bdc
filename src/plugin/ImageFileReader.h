// The built-in reader of uncompressed BMP and TGA pictures, each a video of one frame.
// It refuses what it does not read (run-length coding, palettes), so that the next
// reader of the extension may take the file. Registered by the input service; open may
// run on any thread.
#pragma once

#include "plugin/InputPlugin.h"

namespace Plugin {

class ImageFileReader : public InputPlugin {
 public:
  ImageFileReader();

  // Chooses by extension ("bmp", "tga"); empty for any other or a file it cannot read.
  std::shared_ptr<InputFile> open(const std::wstring& fileName, std::uint32_t trackIndex) override;
};

}  // namespace Plugin
