#include "plugin/InputTgaImageFile.h"

#include <cstring>
#include <vector>

#include "media/BufferGeometry.h"
#include "media/image/ImageBuffer.h"
#include "media/riff/LittleEndian.h"
#include "system/File.h"

namespace Plugin {

namespace {

constexpr std::size_t kHeaderBytes = 18;
constexpr std::uint8_t kTrueColour = 2;     // image type: uncompressed true colour
constexpr std::uint8_t kRightToLeft = 0x10;  // descriptor bits
constexpr std::uint8_t kTopFirst = 0x20;

}  // namespace

std::shared_ptr<InputTgaImageFile> InputTgaImageFile::open(const std::wstring& path) {
  System::File file;
  if (file.tryOpen(path, System::File::Mode::Read) != 0) return nullptr;
  std::byte header[kHeaderBytes];
  if (file.readBlock(header, sizeof(header)) < sizeof(header)) return nullptr;
  const auto byte = [&](std::size_t at) { return static_cast<std::uint8_t>(header[at]); };
  const std::uint8_t depth = byte(16);
  if (byte(2) != kTrueColour || (depth != 24 && depth != 32) || (byte(17) & kRightToLeft) != 0) return nullptr;
  const std::uint32_t width = Media::readLe16(header + 12);
  const std::uint32_t height = Media::readLe16(header + 14);
  if (width == 0 || height == 0 || width > Media::kMaxBufferSide || height > Media::kMaxBufferSide) return nullptr;
  auto image = std::shared_ptr<InputTgaImageFile>(new InputTgaImageFile());
  // The pixels follow the image id and, when the file has one, the colour map.
  const std::uint64_t mapBytes = byte(1) != 0 ? std::uint64_t{Media::readLe16(header + 5)} * ((byte(7) + 7u) / 8) : 0;
  image->pixelPosition_ = kHeaderBytes + byte(0) + mapBytes;
  image->pixelBytes_ = depth / 8u;
  // Pixels that the file cannot hold are never allocated for.
  if (image->pixelPosition_ + std::uint64_t{width} * height * image->pixelBytes_ >
      static_cast<std::uint64_t>(file.size())) {
    return nullptr;
  }
  image->path_ = path;
  image->topDown_ = (byte(17) & kTopFirst) != 0;
  image->flags = Video;
  image->frameCount = 1;
  image->rate = 1;
  image->scale = 1;
  image->pixelFormat = depth == 32 ? Media::Format::Bgra8Unorm : Media::Format::Bgrx8Unorm;
  image->width = width;
  image->height = height;
  return image;
}

std::shared_ptr<Media::ImageBuffer> InputTgaImageFile::readVideo(std::int32_t) {
  try {
    System::File file;
    file.open(path_, System::File::Mode::Read);
    const std::size_t stride = std::size_t{width} * pixelBytes_;
    std::vector<std::byte> pixels(stride * height);
    file.seek(static_cast<std::int64_t>(pixelPosition_), System::File::Origin::Begin);
    if (file.readBlock(pixels.data(), pixels.size()) < pixels.size()) return nullptr;
    auto image = std::make_shared<Media::ImageBuffer>(pixelFormat, width, height);
    for (std::uint32_t y = 0; y < height; ++y) {
      const std::byte* in = pixels.data() + stride * (topDown_ ? y : height - 1 - y);
      std::byte* out = image->row(y);
      if (pixelBytes_ == 4) {
        std::memcpy(out, in, stride);
        continue;
      }
      for (std::uint32_t x = 0; x < width; ++x) {
        std::memcpy(out + x * 4, in + x * 3, 3);
        out[x * 4 + 3] = std::byte{0};
      }
    }
    return image;
  } catch (const std::exception&) {
    return nullptr;
  }
}

}  // namespace Plugin
