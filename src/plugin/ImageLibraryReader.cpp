#include "plugin/ImageLibraryReader.h"

#include "media/image/ImageBuffer.h"
#include "media/image/ImageService.h"
#include "plugin/InputFile.h"

namespace Plugin {

namespace {

class ImageLibraryFile : public InputFile {
 public:
  ImageLibraryFile(Media::ImageService& images, std::wstring path) : images_(&images), path_(std::move(path)) {}

  // Any frame number reads the one picture.
  std::shared_ptr<Media::ImageBuffer> readVideo(std::int32_t) override {
    try {
      return images_->loadFromFile(path_);
    } catch (const std::exception&) {
      // The reason went to the log as the exception was made; the frame is missing.
      return nullptr;
    }
  }

 private:
  Media::ImageService* images_;
  std::wstring path_;
};

}  // namespace

ImageLibraryReader::ImageLibraryReader(Media::ImageService& images)
    : InputPlugin(L"Image Library File Reader",
                  {L"PngFile (*.png)", L"*.png", L"JpegFile (*.jpg)", L"*.jpg;*.jpeg", L"BmpFile (*.bmp)", L"*.bmp",
                   L"GifFile (*.gif)", L"*.gif", L"WebpFile (*.webp)", L"*.webp", L"TiffFile (*.tif)", L"*.tif;*.tiff"},
                  L"Still pictures through the platform's image library.", Kind::Video | Kind::Image),
      images_(&images) {}

std::shared_ptr<InputFile> ImageLibraryReader::open(const std::wstring& fileName, std::uint32_t) {
  Media::Format format = Media::Format::Unknown;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  try {
    if (!images_->canLoadFile(fileName, format, width, height)) return nullptr;
  } catch (const std::exception&) {
    return nullptr;
  }
  auto file = std::make_shared<ImageLibraryFile>(*images_, fileName);
  file->flags = InputFile::Video;
  file->frameCount = 1;
  file->rate = 1;
  file->scale = 1;
  file->pixelFormat = format;
  file->width = width;
  file->height = height;
  return file;
}

}  // namespace Plugin
