#include "media/image/ImageBuffer.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "system/Exception.h"
#include "system/Log.h"

namespace Media {

namespace {

constexpr std::size_t kAlignment = 32;

constexpr std::size_t roundUp(std::size_t value, std::size_t multiple) noexcept {
  return (value + multiple - 1) / multiple * multiple;
}

// The formats of CPU images, as users see them and as bitmap headers describe them.
struct CpuFormat {
  Format format;
  const char* name;
  std::uint32_t compression;
  std::uint16_t bitCount;
  std::uint32_t headerBytes;  // a pixel in a bitmap
  std::uint32_t bufferBytes;  // a pixel in the buffer
};

constexpr CpuFormat kCpuFormats[] = {
    {Format::Rgba16Float, "RGBA64bit(HF64)", kFourccHf64, 64, 8, 8},
    {Format::Rgba16Unorm, "RGBA64bit(PA64)", kFourccPa64, 64, 8, 8},
    {Format::Rgba16Snorm, "YC48", kFourccYc48, 48, 6, 8},
    {Format::Rgba8Unorm, "RGBA32bit", kBiRgb, 32, 4, 4},
    {Format::Bgra8Unorm, "RGBA32bit", kBiRgb, 32, 4, 4},
    {Format::Bgrx8Unorm, "RGB24bit", kBiRgb, 24, 3, 4},
    {Format::Yuy2, "YUY2", kFourccYuy2, 16, 2, 2},
};

const CpuFormat* findCpuFormat(Format format) noexcept {
  for (const CpuFormat& entry : kCpuFormats) {
    if (entry.format == format) return &entry;
  }
  return nullptr;
}

const CpuFormat& cpuFormat(Format format, const char* place) {
  const CpuFormat* entry = findCpuFormat(format);
  if (!entry) throw System::NoteException(place, "image format not supported.");
  return *entry;
}

// Bytes of one source row of a bitmap: whole pixels rounded up to 4.
std::size_t bitmapRowBytes(std::uint32_t bits, std::uint32_t width) noexcept {
  return roundUp(std::size_t{bits / 8} * width, 4);
}

}  // namespace

void ImageBuffer::AlignedDelete::operator()(std::byte* p) const noexcept {
  ::operator delete[](p, std::align_val_t{kAlignment});
}

std::uint32_t ImageBuffer::bufferPixelBytes(Format format, const char* place) {
  return cpuFormat(format, place).bufferBytes;
}

std::uint32_t ImageBuffer::getDefaultPitchSize(Format format, std::uint32_t width) {
  constexpr const char* kPlace = "Media::ImageBuffer::getDefaultPitchSize";
  const std::size_t pitch = roundUp(std::size_t{bufferPixelBytes(format, kPlace)} * width, kAlignment);
  if (pitch > std::numeric_limits<std::uint32_t>::max()) {
    throw System::NoteException(kPlace, "image size too large.", L"width %u", width);
  }
  return static_cast<std::uint32_t>(pitch);
}

BitmapInfoHeader ImageBuffer::getBitmapInfoHeader(Format format, std::uint32_t width, std::uint32_t height) {
  const CpuFormat& entry = cpuFormat(format, "Media::ImageBuffer::getBitmapInfoHeader");
  BitmapInfoHeader header;
  header.biWidth = static_cast<std::int32_t>(width);
  header.biHeight = static_cast<std::int32_t>(height);
  header.biBitCount = entry.bitCount;
  header.biCompression = entry.compression;
  header.biSizeImage = static_cast<std::uint32_t>(roundUp(std::size_t{entry.headerBytes} * width, 4) * height);
  return header;
}

std::string ImageBuffer::formatName(Format format) {
  const CpuFormat* entry = findCpuFormat(format);
  return entry ? entry->name : "";
}

ImageBuffer::ImageBuffer(Format format, std::uint32_t width, std::uint32_t height) : format_(format) {
  resize(width, height);
}

void ImageBuffer::resize(std::uint32_t width, std::uint32_t height, std::uint32_t pitch) {
  constexpr const char* kPlace = "Media::ImageBuffer::resize";
  const std::uint32_t rowPitch = pitch ? pitch : getDefaultPitchSize(format_, width);
  // Every row is written whole, and the size of the whole image is counted in 32 bits.
  if (rowPitch < rowBytes(format_, width)) {
    throw System::NoteException(kPlace, "image pitch shorter than a row.", L"width %u pitch %u", width, rowPitch);
  }
  if (std::size_t{rowPitch} * height > std::numeric_limits<std::uint32_t>::max()) {
    throw System::NoteException(kPlace, "image size too large.", L"%u x %u", width, height);
  }
  const std::size_t bytes = roundUp(std::size_t{rowPitch} * height, kAlignment);
  if (bytes > capacity_ || !data_) {
    data_.reset(static_cast<std::byte*>(::operator new[](std::max(bytes, kAlignment), std::align_val_t{kAlignment})));
    capacity_ = std::max(bytes, kAlignment);
  }
  width_ = width;
  height_ = height;
  pitch_ = rowPitch;
}

void ImageBuffer::clear() noexcept { std::memset(data_.get(), 0, capacity_); }

void ImageBuffer::convertFrom(const BitmapInfoHeader& header, std::span<const std::byte> data) {
  const std::uint32_t bits = header.biBitCount;
  const std::size_t sourceRow = bitmapRowBytes(bits, width_);
  // The bit count decides the buffer's format; a bitmap that does not fit it, or is
  // shorter than its rows, is refused whole.
  const bool suits = (bits == 16 && format_ == Format::Yuy2) || (bits == 24 && format_ == Format::Bgrx8Unorm) ||
                     (bits == 32 && format_ == Format::Bgra8Unorm) || (bits == 48 && format_ == Format::Rgba16Snorm) ||
                     (bits == 64 && (format_ == Format::Rgba16Float || format_ == Format::Rgba16Unorm));
  if (!suits || data.size() < sourceRow * height_) {
    System::Log::error("Media::ImageBuffer::convertFrom", "can not convert DIB image data. bit=%d fcc=%04x",
                       static_cast<int>(bits), header.biCompression);
    clear();
    return;
  }
  const std::byte* source = data.data();
  switch (bits) {
    case 16:
      // A YUY2 row of odd width ends in a whole block of two pixels.
      for (std::uint32_t y = 0; y < height_; ++y) {
        std::memcpy(row(y), source + sourceRow * y, std::min<std::size_t>(sourceRow, pitch_));
      }
      break;
    case 24:
      for (std::uint32_t y = 0; y < height_; ++y) {
        const std::byte* in = source + sourceRow * (height_ - 1 - y);
        std::byte* out = row(y);
        for (std::uint32_t x = 0; x < width_; ++x) {
          out[x * 4 + 0] = in[x * 3 + 0];
          out[x * 4 + 1] = in[x * 3 + 1];
          out[x * 4 + 2] = in[x * 3 + 2];
          out[x * 4 + 3] = std::byte{0};
        }
      }
      break;
    case 32:
      for (std::uint32_t y = 0; y < height_; ++y) {
        std::memcpy(row(y), source + sourceRow * (height_ - 1 - y), std::size_t{width_} * 4);
      }
      break;
    case 48:
      for (std::uint32_t y = 0; y < height_; ++y) {
        const std::byte* in = source + sourceRow * y;
        std::byte* out = row(y);
        for (std::uint32_t x = 0; x < width_; ++x) {
          std::memcpy(out + x * 8, in + x * 6, 6);
          out[x * 8 + 6] = out[x * 8 + 7] = std::byte{0};
        }
      }
      break;
    default:
      if (sourceRow == pitch_) {
        std::memcpy(data_.get(), source, sourceRow * height_);
      } else {
        for (std::uint32_t y = 0; y < height_; ++y) std::memcpy(row(y), source + sourceRow * y, std::size_t{width_} * 8);
      }
      break;
  }
}

std::vector<std::byte> ImageBuffer::toBitmap() const {
  const BitmapInfoHeader header = getBitmapInfoHeader(format_, width_, height_);
  const std::uint32_t bits = header.biBitCount;
  const std::size_t targetRow = bitmapRowBytes(bits, width_);
  std::vector<std::byte> bitmap(targetRow * height_);
  for (std::uint32_t y = 0; y < height_; ++y) {
    const std::byte* in = row(y);
    switch (bits) {
      case 24: {
        // RGB bitmaps stand bottom row first.
        std::byte* out = bitmap.data() + targetRow * (height_ - 1 - y);
        for (std::uint32_t x = 0; x < width_; ++x) std::memcpy(out + x * 3, in + x * 4, 3);
        break;
      }
      case 32:
        std::memcpy(bitmap.data() + targetRow * (height_ - 1 - y), in, std::size_t{width_} * 4);
        break;
      case 48: {
        std::byte* out = bitmap.data() + targetRow * y;
        for (std::uint32_t x = 0; x < width_; ++x) std::memcpy(out + x * 6, in + x * 8, 6);
        break;
      }
      default:
        std::memcpy(bitmap.data() + targetRow * y, in, std::min<std::size_t>(targetRow, pitch_));
        break;
    }
  }
  return bitmap;
}

}  // namespace Media
