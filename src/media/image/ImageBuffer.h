// Pixels on the CPU: a frame from a reader, a picture from a file, a read-back for
// export. Rows are top first, `pitch` bytes apart; pitch and storage are multiples of 32
// bytes, so that row copies can run in wide steps. Written by one thread, then shared
// read-only (held by shared_ptr).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "media/Format.h"
#include "media/image/BitmapInfoHeader.h"

namespace Media {

class ImageBuffer {
 public:
  // An image of the default pitch; the contents are not cleared.
  ImageBuffer(Format format, std::uint32_t width, std::uint32_t height);

  // Bytes of one pixel in the buffer, and in a bitmap header, for the formats of CPU
  // images; other formats throw "image format not supported." with `place`.
  static std::uint32_t bufferPixelBytes(Format format, const char* place);
  // bytes * width rounded up to 32.
  static std::uint32_t getDefaultPitchSize(Format format, std::uint32_t width);
  // The header that describes an image of this format to codecs and plug-ins.
  static BitmapInfoHeader getBitmapInfoHeader(Format format, std::uint32_t width, std::uint32_t height);
  // The name users see for a pixel format ("YUY2", "RGBA32bit", ...); empty if none.
  static std::string formatName(Format format);

  Format format() const noexcept { return format_; }
  std::uint32_t width() const noexcept { return width_; }
  std::uint32_t height() const noexcept { return height_; }
  std::uint32_t pitch() const noexcept { return pitch_; }
  // pitch * height; the storage behind it may be longer.
  std::uint32_t size() const noexcept { return pitch_ * height_; }
  std::byte* data() noexcept { return data_.get(); }
  const std::byte* data() const noexcept { return data_.get(); }
  std::byte* row(std::uint32_t y) noexcept { return data_.get() + std::size_t{pitch_} * y; }
  const std::byte* row(std::uint32_t y) const noexcept { return data_.get() + std::size_t{pitch_} * y; }

  // A new size; pitch 0 means the default. The contents are not kept.
  void resize(std::uint32_t width, std::uint32_t height, std::uint32_t pitch = 0);
  void clear() noexcept;

  // Takes a device-independent bitmap of a codec or plug-in into this buffer, whose
  // format must suit the bitmap's bit count: 16 bits into YUY2, 24 into BGRX (bottom-up,
  // a fourth byte 0 added), 32 into BGRA (bottom-up), 48 into YC48 (a fourth word 0),
  // 64 into HF64 or PA64. Source rows are (bits / 8 * width) rounded up to 4 bytes. Any
  // other bitmap, or data shorter than the bitmap, logs an error and clears the buffer.
  void convertFrom(const BitmapInfoHeader& header, std::span<const std::byte> data);
  // The image as the device-independent bitmap of its format's header, the reverse of
  // convertFrom: what a writer stores and a codec or plug-in is handed.
  std::vector<std::byte> toBitmap() const;

 private:
  struct AlignedDelete {
    void operator()(std::byte* p) const noexcept;
  };

  Format format_;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  std::uint32_t pitch_ = 0;
  std::size_t capacity_ = 0;
  std::unique_ptr<std::byte[], AlignedDelete> data_;
};

}  // namespace Media
