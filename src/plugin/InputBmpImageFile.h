// An uncompressed 24- or 32-bit BMP file as one frame. Each read opens the file again
// and reads into a buffer of its own, so a changed picture is seen and reads of several
// threads never share anything.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "plugin/InputFile.h"

namespace Plugin {

class InputBmpImageFile : public InputFile {
 public:
  // The file, or empty when it is not such a BMP (run-length coded, a palette, another
  // header form) or its header promises more pixels than the file holds.
  static std::shared_ptr<InputBmpImageFile> open(const std::wstring& path);

  // Empty when the file can no longer be read whole.
  std::shared_ptr<Media::ImageBuffer> readVideo(std::int32_t frame) override;

 private:
  InputBmpImageFile() = default;

  std::wstring path_;
  std::uint64_t pixelPosition_ = 0;
  std::uint16_t bits_ = 0;
  bool topDown_ = false;
};

}  // namespace Plugin
