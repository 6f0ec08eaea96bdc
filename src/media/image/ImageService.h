// Still image files: the door through which the image reader of the input service
// loads pictures and the PNG and JPEG outputs write them (System::Singleton). The
// platform's image library does the decoding and encoding behind Media::ImageCodec.
// Pictures come as straight RGBA, and are premultiplied once, by the upload that puts
// them on the GPU. Acquired and released on the main thread; any thread may load and
// save, as many at once as like.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "media/Format.h"
#include "media/image/ImageCodec.h"

namespace Media {

class ImageBuffer;

class ImageService {
 public:
  using CodecFactory = std::function<std::unique_ptr<ImageCodec>()>;

  // The platform installs its image library before the service is acquired.
  static void setCodecFactory(CodecFactory factory);

  ImageService();
  ~ImageService();
  ImageService(const ImageService&) = delete;
  ImageService& operator=(const ImageService&) = delete;

  // Whether the file holds a picture that loads; if so, its format (28) and size.
  bool canLoadFile(const std::wstring& path, Format& format, std::uint32_t& width, std::uint32_t& height);
  // The first frame of the file as a new image of format 28, straight alpha.
  std::shared_ptr<ImageBuffer> loadFromFile(const std::wstring& path);
  // Writes one frame of `image` (format 28, 87 or 88, and 11 into a PNG; other formats
  // throw "image format not supported."), replacing the file whole or not at all.
  void saveToFile(const std::wstring& path, ImageContainer container, const ImageBuffer& image,
                  const ImageWriteOptions& options);
  // A JPEG without alpha, `quality` from 0 to 100.
  void saveJpeg(const ImageBuffer& image, const std::wstring& path, std::int32_t quality);

 private:
  std::unique_ptr<ImageCodec> codec_;
};

}  // namespace Media
