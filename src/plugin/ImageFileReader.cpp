#include "plugin/ImageFileReader.h"

#include "plugin/InputBmpImageFile.h"
#include "plugin/InputTgaImageFile.h"
#include "system/FileName.h"

namespace Plugin {

ImageFileReader::ImageFileReader()
    : InputPlugin(L"Uncompressed Image File Reader", {L"BmpFile (*.bmp)", L"*.bmp", L"TgaFile (*.tga)", L"*.tga"},
                  L"Uncompressed 24- and 32-bit BMP and TGA pictures.", Kind::Video | Kind::Image) {}

std::shared_ptr<InputFile> ImageFileReader::open(const std::wstring& fileName, std::uint32_t) {
  const std::wstring extension = System::FileName::extension(fileName);
  // A file that cannot be read is refused like one of another kind.
  try {
    if (extension == L"bmp") return InputBmpImageFile::open(fileName);
    if (extension == L"tga") return InputTgaImageFile::open(fileName);
  } catch (const std::exception&) {
  }
  return nullptr;
}

}  // namespace Plugin
