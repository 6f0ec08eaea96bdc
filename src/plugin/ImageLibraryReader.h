// The reader of still pictures through the platform's image library (PNG, JPEG, BMP,
// GIF, WebP, TIFF): each a video of one frame in 8-bit RGBA with straight alpha. Each
// read decodes the file again, so a changed picture is seen; only the first frame of an
// animated file is read. Registered by the input service; open may run on any thread.
#pragma once

#include "plugin/InputPlugin.h"

namespace Media {
class ImageService;
}

namespace Plugin {

class ImageLibraryReader : public InputPlugin {
 public:
  explicit ImageLibraryReader(Media::ImageService& images);

  // Empty when the library finds no picture it can read in the file.
  std::shared_ptr<InputFile> open(const std::wstring& fileName, std::uint32_t trackIndex) override;

 private:
  Media::ImageService* images_;
};

}  // namespace Plugin
