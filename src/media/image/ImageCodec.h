// What the image service asks of the platform's image library: the size of a picture
// in a file, its first frame decoded to straight RGBA, and one frame written as PNG or
// JPEG. Implementations are safe to call from any thread at once. Failures throw the
// system's exceptions, naming the library call that failed, with the caller's place.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace Media {

class ImageBuffer;

enum class ImageContainer : std::uint8_t { Png, Jpeg };

struct ImageSize {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
};

// How to write an image: whether its colour is premultiplied by its alpha, and for
// JPEG the quality from 0 (smallest) to 1 (best); without one the library's default.
struct ImageWriteOptions {
  bool premultiplied = false;
  std::optional<float> quality;
};

class ImageCodec {
 public:
  virtual ~ImageCodec() = default;

  // The size of the first frame, where a reader takes the file and finds a picture of
  // some size in it; nothing otherwise. Only the file's header is read.
  virtual std::optional<ImageSize> readSize(const std::wstring& path) = 0;
  // The first frame as a new image of format 28: 8-bit RGBA, straight alpha.
  virtual std::shared_ptr<ImageBuffer> read(const std::wstring& path, const char* place) = 0;
  // Writes `image` (format 28, 87 or 88) as one frame. JPEG keeps no alpha.
  virtual void write(const std::wstring& path, ImageContainer container, const ImageBuffer& image,
                     const ImageWriteOptions& options, const char* place) = 0;
};

}  // namespace Media
