#include "media/image/ImageService.h"

#include <algorithm>

#include "media/image/ImageBuffer.h"
#include "system/Exception.h"

namespace Media {

namespace {

ImageService::CodecFactory& codecFactory() {
  static ImageService::CodecFactory factory;
  return factory;
}

}  // namespace

void ImageService::setCodecFactory(CodecFactory factory) { codecFactory() = std::move(factory); }

ImageService::ImageService() {
  if (!codecFactory()) throw System::NoteException("Media::ImageService::ImageService", "image library not installed.");
  codec_ = codecFactory()();
}

ImageService::~ImageService() = default;

bool ImageService::canLoadFile(const std::wstring& path, Format& format, std::uint32_t& width,
                               std::uint32_t& height) {
  const std::optional<ImageSize> size = codec_->readSize(path);
  if (!size) return false;
  format = Format::Rgba8Unorm;
  width = size->width;
  height = size->height;
  return true;
}

std::shared_ptr<ImageBuffer> ImageService::loadFromFile(const std::wstring& path) {
  return codec_->read(path, "Media::ImageService::loadFromFile");
}

void ImageService::saveToFile(const std::wstring& path, ImageContainer container, const ImageBuffer& image,
                              const ImageWriteOptions& options) {
  constexpr const char* kPlace = "Media::ImageService::saveToFile";
  const Format format = image.format();
  const bool sixteenBits = format == Format::Rgba16Unorm && container == ImageContainer::Png;
  if (format != Format::Rgba8Unorm && format != Format::Bgra8Unorm && format != Format::Bgrx8Unorm && !sixteenBits) {
    throw System::NoteException(kPlace, "image format not supported.", L"format %d", static_cast<int>(format));
  }
  codec_->write(path, container, image, options, kPlace);
}

void ImageService::saveJpeg(const ImageBuffer& image, const std::wstring& path, std::int32_t quality) {
  ImageWriteOptions options;
  options.quality = static_cast<float>(std::clamp(quality, 0, 100)) / 100.0f;
  saveToFile(path, ImageContainer::Jpeg, image, options);
}

}  // namespace Media
