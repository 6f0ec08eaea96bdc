#include "media/codec/VideoDecompressor.h"

#include <cstdlib>

#include "media/BufferGeometry.h"
#include "media/codec/CodecProvider.h"
#include "media/riff/FourccEqual.h"
#include "media/riff/LittleEndian.h"

namespace Media {

namespace {

struct BitmapForm {
  std::uint32_t compression;
  std::uint16_t bits;
  Format format;
};

// What a bitmap of a stream or a decoder is in the program. The first three are the
// forms asked of a decoder, in the order asked.
constexpr BitmapForm kBitmapForms[] = {
    {kFourccYuy2, 16, Format::Yuy2},         {kBiRgb, 32, Format::Bgra8Unorm},
    {kBiRgb, 24, Format::Bgrx8Unorm},        {kFourccPa64, 64, Format::Rgba16Unorm},
    {kFourccHf64, 64, Format::Rgba16Float},
};
constexpr std::size_t kDecoderForms = 3;

BitmapInfoHeader bitmapHeader(std::uint32_t compression, std::uint16_t bits, std::uint32_t width,
                              std::uint32_t height) {
  BitmapInfoHeader header;
  header.biWidth = static_cast<std::int32_t>(width);
  header.biHeight = static_cast<std::int32_t>(height);
  header.biBitCount = bits;
  header.biCompression = compression;
  header.biSizeImage = (bits / 8 * width + 3) / 4 * 4 * height;
  return header;
}

}  // namespace

bool VideoDecompressor::setup(CodecProvider& provider, std::uint32_t handler, std::vector<std::byte> inputFormat,
                              std::span<const std::byte> sample) {
  inputFormat_ = std::move(inputFormat);
  if (inputFormat_.size() < sizeof(BitmapInfoHeader)) return false;
  // A negative height marks rows stored top first; the size is what counts here.
  const auto side = [](std::int32_t value) { return static_cast<std::uint32_t>(std::abs(std::int64_t{value})); };
  const std::uint32_t width = side(static_cast<std::int32_t>(readLe32(inputFormat_.data() + 4)));
  const std::uint32_t height = side(static_cast<std::int32_t>(readLe32(inputFormat_.data() + 8)));
  if (width == 0 || height == 0 || width > kMaxBufferSide || height > kMaxBufferSide) return false;
  const std::uint16_t bits = readLe16(inputFormat_.data() + 14);

  const bool uncompressed = fourccEqual(handler, kBiRgb) || fourccEqual(handler, kFourccYuy2) ||
                            fourccEqual(handler, kFourccPa64) || fourccEqual(handler, kFourccHf64);
  if (uncompressed) {
    for (const BitmapForm& form : kBitmapForms) {
      if (fourccEqual(handler, form.compression) && bits == form.bits) {
        output_ = bitmapHeader(form.compression, bits, width, height);
        pixelFormat_ = form.format;
        return true;
      }
    }
    return false;
  }
  output_ = bitmapHeader(kBiRgb, 0, width, height);
  return setupDecoder(provider, handler, sample);
}

bool VideoDecompressor::setupDecoder(CodecProvider& provider, std::uint32_t handler,
                                     std::span<const std::byte> sample) {
  codec_ = provider.openVideo(handler, inputFormat_, sample);
  if (!codec_) codec_ = provider.openVideo(readLe32(inputFormat_.data() + 16), inputFormat_, sample);
  if (!codec_) return false;
  const auto width = static_cast<std::uint32_t>(output_.biWidth);
  const auto height = static_cast<std::uint32_t>(output_.biHeight);
  for (std::size_t i = 0; i < kDecoderForms; ++i) {
    const BitmapInfoHeader header = bitmapHeader(kBitmapForms[i].compression, kBitmapForms[i].bits, width, height);
    if (!codec_->canOutput(header)) continue;
    codec_->begin(header);
    output_ = header;
    pixelFormat_ = kBitmapForms[i].format;
    return true;
  }
  codec_.reset();
  return false;
}

bool VideoDecompressor::takePicture(std::int64_t number) {
  if (!codec_ || !codec_->holds(number)) return false;
  outputBytes_.resize(output_.biSizeImage);
  return codec_->picture(number, outputBytes_);
}

}  // namespace Media
