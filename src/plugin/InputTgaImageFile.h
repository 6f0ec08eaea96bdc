// An uncompressed true-colour TGA file (24 or 32 bits) as one frame. Each read opens
// the file again and reads into a buffer of its own, so a changed picture is seen and
// reads of several threads never share anything.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "plugin/InputFile.h"

namespace Plugin {

class InputTgaImageFile : public InputFile {
 public:
  // The file, or empty when it is not such a TGA (run-length coded, a palette, grey,
  // rows stored right to left) or its header promises more pixels than the file holds.
  static std::shared_ptr<InputTgaImageFile> open(const std::wstring& path);

  // Empty when the file can no longer be read whole.
  std::shared_ptr<Media::ImageBuffer> readVideo(std::int32_t frame) override;

 private:
  InputTgaImageFile() = default;

  std::wstring path_;
  std::uint64_t pixelPosition_ = 0;
  std::uint32_t pixelBytes_ = 0;
  bool topDown_ = false;
};

}  // namespace Plugin
