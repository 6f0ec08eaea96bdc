#include "plugin/InputBmpImageFile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "media/BufferGeometry.h"
#include "media/image/ImageBuffer.h"
#include "media/riff/LittleEndian.h"
#include "system/File.h"

namespace Plugin {

namespace {

constexpr std::size_t kFileHeaderBytes = 14;
constexpr std::size_t kInfoHeaderBytes = 40;
constexpr std::uint16_t kBmSignature = 19778;  // "BM"

std::uint64_t rowBytes(std::uint16_t bits, std::uint32_t width) { return (std::uint64_t{bits} / 8 * width + 3) / 4 * 4; }

}  // namespace

std::shared_ptr<InputBmpImageFile> InputBmpImageFile::open(const std::wstring& path) {
  System::File file;
  if (file.tryOpen(path, System::File::Mode::Read) != 0) return nullptr;
  std::byte header[kFileHeaderBytes + kInfoHeaderBytes];
  if (file.readBlock(header, sizeof(header)) < sizeof(header)) return nullptr;
  const std::byte* info = header + kFileHeaderBytes;
  const std::uint16_t bits = Media::readLe16(info + 14);
  if (Media::readLe16(header) != kBmSignature || Media::readLe32(info) != kInfoHeaderBytes ||
      Media::readLe32(info + 16) != Media::kBiRgb || (bits != 24 && bits != 32)) {
    return nullptr;
  }
  const auto signedHeight = static_cast<std::int32_t>(Media::readLe32(info + 8));
  const std::uint64_t width = std::abs(std::int64_t{static_cast<std::int32_t>(Media::readLe32(info + 4))});
  const std::uint64_t height = std::abs(std::int64_t{signedHeight});
  if (width == 0 || height == 0 || width > Media::kMaxBufferSide || height > Media::kMaxBufferSide) return nullptr;
  auto image = std::shared_ptr<InputBmpImageFile>(new InputBmpImageFile());
  image->pixelPosition_ = Media::readLe32(header + 10);
  // Pixels that the file cannot hold are never allocated for.
  if (image->pixelPosition_ + rowBytes(bits, static_cast<std::uint32_t>(width)) * height >
      static_cast<std::uint64_t>(file.size())) {
    return nullptr;
  }
  image->path_ = path;
  image->bits_ = bits;
  image->topDown_ = signedHeight < 0;
  image->flags = Video;
  image->frameCount = 1;
  image->rate = 1;
  image->scale = 1;
  image->pixelFormat = bits == 32 ? Media::Format::Bgra8Unorm : Media::Format::Bgrx8Unorm;
  image->width = static_cast<std::uint32_t>(width);
  image->height = static_cast<std::uint32_t>(height);
  return image;
}

std::shared_ptr<Media::ImageBuffer> InputBmpImageFile::readVideo(std::int32_t) {
  try {
    System::File file;
    file.open(path_, System::File::Mode::Read);
    const std::size_t stride = static_cast<std::size_t>(rowBytes(bits_, width));
    std::vector<std::byte> pixels(stride * height);
    file.seek(static_cast<std::int64_t>(pixelPosition_), System::File::Origin::Begin);
    if (file.readBlock(pixels.data(), pixels.size()) < pixels.size()) return nullptr;
    // Bitmaps keep their bottom row first, unless a negative height says otherwise.
    if (topDown_) {
      std::vector<std::byte> row(stride);
      for (std::size_t top = 0, bottom = height - 1; top < bottom; ++top, --bottom) {
        std::memcpy(row.data(), pixels.data() + top * stride, stride);
        std::memcpy(pixels.data() + top * stride, pixels.data() + bottom * stride, stride);
        std::memcpy(pixels.data() + bottom * stride, row.data(), stride);
      }
    }
    auto image = std::make_shared<Media::ImageBuffer>(pixelFormat, width, height);
    Media::BitmapInfoHeader header;
    header.biWidth = static_cast<std::int32_t>(width);
    header.biHeight = static_cast<std::int32_t>(height);
    header.biBitCount = bits_;
    image->convertFrom(header, pixels);
    return image;
  } catch (const std::exception&) {
    return nullptr;
  }
}

}  // namespace Plugin
