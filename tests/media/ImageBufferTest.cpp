// Image buffers: their pitches, the bitmap headers that describe them, and the taking
// in of bitmaps of every bit count, with odd widths whose source rows are padded to 4
// bytes and bottom-up rows that must be flipped.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "media/image/ImageBuffer.h"
#include "system/Exception.h"
#include "system/Log.h"

namespace {

using Media::Format;
using Media::ImageBuffer;

std::string failureOf(const auto& call) {
  try {
    call();
  } catch (const System::NoteException& e) {
    return e.message() + " | " + e.what();
  }
  return "no exception";
}

// A bitmap of `rows`, each padded with 0xEE to `rowBytes`.
std::vector<std::byte> bitmap(const std::vector<std::vector<std::uint8_t>>& rows, std::size_t rowBytes) {
  std::vector<std::byte> data;
  for (const auto& row : rows) {
    for (std::uint8_t value : row) data.push_back(std::byte{value});
    for (std::size_t i = row.size(); i < rowBytes; ++i) data.push_back(std::byte{0xEE});
  }
  return data;
}

Media::BitmapInfoHeader header(std::uint16_t bits, std::uint32_t compression = Media::kBiRgb) {
  Media::BitmapInfoHeader result;
  result.biBitCount = bits;
  result.biCompression = compression;
  return result;
}

std::vector<std::uint8_t> row(const ImageBuffer& image, std::uint32_t y, std::size_t bytes) {
  const auto* begin = reinterpret_cast<const std::uint8_t*>(image.row(y));
  return {begin, begin + bytes};
}

TEST(ImageBuffer, DefaultPitchIsTheRowRoundedUpTo32Bytes) {
  EXPECT_EQ(ImageBuffer::getDefaultPitchSize(Format::Yuy2, 1), 32u);
  EXPECT_EQ(ImageBuffer::getDefaultPitchSize(Format::Yuy2, 16), 32u);
  EXPECT_EQ(ImageBuffer::getDefaultPitchSize(Format::Yuy2, 17), 64u);
  // YC48 has 6 bytes a pixel in a bitmap but 8 in the buffer.
  EXPECT_EQ(ImageBuffer::getDefaultPitchSize(Format::Rgba16Snorm, 4), 32u);
  EXPECT_EQ(ImageBuffer::getDefaultPitchSize(Format::Rgba16Float, 5), 64u);
  EXPECT_EQ(ImageBuffer::getDefaultPitchSize(Format::Bgrx8Unorm, 9), 64u);
  EXPECT_EQ(ImageBuffer::getDefaultPitchSize(Format::Rgba8Unorm, 1920), 7680u);
  const std::string refused = failureOf([] { ImageBuffer::getDefaultPitchSize(Format::A8Unorm, 4); });
  EXPECT_EQ(refused.substr(0, refused.find(" | ")), "image format not supported.");
  EXPECT_NE(refused.find("Media::ImageBuffer::getDefaultPitchSize"), std::string::npos);

  ImageBuffer image(Format::Bgra8Unorm, 3, 2);
  EXPECT_EQ(image.pitch(), 32u);
  EXPECT_EQ(image.size(), 64u);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(image.data()) % 32, 0u);
  image.resize(5, 3, 64);
  EXPECT_EQ(image.pitch(), 64u);
  image.resize(5, 3);
  EXPECT_EQ(image.pitch(), 32u);
}

TEST(ImageBuffer, PitchesThatCannotHoldTheirRowsAreRefused) {
  ImageBuffer image(Format::Rgba16Float, 4, 2);
  EXPECT_THROW(image.resize(5, 2, 32), System::NoteException);
  EXPECT_EQ(image.width(), 4u);
  // 2^30 pixels of 8 bytes: a row past what a 32-bit size counts.
  EXPECT_THROW(ImageBuffer(Format::Rgba16Float, 1u << 30, 1), System::NoteException);
  EXPECT_THROW(ImageBuffer(Format::Rgba8Unorm, 65536, 65536), System::NoteException);
}

TEST(ImageBuffer, BitmapHeadersCountTheirBytesPerPixelNotTheBuffers) {
  // YC48 has 6 bytes a pixel in a bitmap: 18 rounded to 20, two rows.
  const Media::BitmapInfoHeader yc48 = ImageBuffer::getBitmapInfoHeader(Format::Rgba16Snorm, 3, 2);
  EXPECT_EQ(yc48.biBitCount, 48);
  EXPECT_EQ(yc48.biCompression, Media::fourcc("YC48"));
  EXPECT_EQ(yc48.biSizeImage, 40u);
  EXPECT_EQ(ImageBuffer::getBitmapInfoHeader(Format::Bgrx8Unorm, 3, 2).biSizeImage, 24u);
  EXPECT_EQ(ImageBuffer::getBitmapInfoHeader(Format::Yuy2, 3, 1).biSizeImage, 8u);
  const std::string refused = failureOf([] { ImageBuffer::getBitmapInfoHeader(Format::Yuy2Packed, 2, 2); });
  EXPECT_NE(refused.find("Media::ImageBuffer::getBitmapInfoHeader"), std::string::npos);
}

TEST(ImageBuffer, RgbBitmapsAreBottomUpAndPaddedToFourBytes) {
  // 24 bits, width 3: 9 bytes of pixels, 3 of padding. The last source row is the top.
  ImageBuffer rgb(Format::Bgrx8Unorm, 3, 2);
  rgb.convertFrom(header(24), bitmap({{1, 2, 3, 4, 5, 6, 7, 8, 9}, {11, 12, 13, 14, 15, 16, 17, 18, 19}}, 12));
  EXPECT_EQ(row(rgb, 0, 12), (std::vector<std::uint8_t>{11, 12, 13, 0, 14, 15, 16, 0, 17, 18, 19, 0}));
  EXPECT_EQ(row(rgb, 1, 12), (std::vector<std::uint8_t>{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0}));

  ImageBuffer bgra(Format::Bgra8Unorm, 3, 2);
  bgra.convertFrom(header(32), bitmap({{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, {21, 22, 23, 24, 25, 26, 27, 28, 29,
                                                                                 30, 31, 32}},
                                      12));
  EXPECT_EQ(row(bgra, 0, 12), (std::vector<std::uint8_t>{21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32}));
  EXPECT_EQ(row(bgra, 1, 4), (std::vector<std::uint8_t>{1, 2, 3, 4}));
}

TEST(ImageBuffer, YuvAndDeepBitmapsAreTopDown) {
  // YUY2 of width 3 ends in a whole block: source rows of 8 bytes.
  ImageBuffer yuy2(Format::Yuy2, 3, 2);
  yuy2.convertFrom(header(16, Media::kFourccYuy2),
                   bitmap({{1, 2, 3, 4, 5, 6, 7, 8}, {9, 10, 11, 12, 13, 14, 15, 16}}, 8));
  EXPECT_EQ(row(yuy2, 0, 8), (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(row(yuy2, 1, 8), (std::vector<std::uint8_t>{9, 10, 11, 12, 13, 14, 15, 16}));

  // YC48 of width 3: 18 bytes of pixels, 2 of padding; each pixel gets a fourth word 0.
  ImageBuffer yc48(Format::Rgba16Snorm, 3, 2);
  std::vector<std::uint8_t> source(18);
  for (std::size_t i = 0; i < source.size(); ++i) source[i] = static_cast<std::uint8_t>(i + 1);
  yc48.convertFrom(header(48, Media::kFourccYc48), bitmap({source, source}, 20));
  EXPECT_EQ(row(yc48, 1, 24), (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0,
                                                          13, 14, 15, 16, 17, 18, 0, 0}));

  // 64 bits: one copy where the rows are as long as the pitch (width 4), row by row
  // where they are not (width 3).
  for (std::uint32_t width : {4u, 3u}) {
    ImageBuffer deep(Format::Rgba16Unorm, width, 2);
    std::vector<std::uint8_t> top(width * 8, 0x11);
    std::vector<std::uint8_t> bottom(width * 8, 0x22);
    deep.convertFrom(header(64, Media::kFourccPa64), bitmap({top, bottom}, width * 8));
    EXPECT_EQ(row(deep, 0, width * 8), top) << width;
    EXPECT_EQ(row(deep, 1, width * 8), bottom) << width;
  }
}

TEST(ImageBuffer, BitmapsThatDoNotFitAreLoggedAndLeaveTheBufferClear) {
  std::vector<std::string> errors;
  System::Log::setHandler([&](const System::Log::Type& type, const char* place, const char* message) {
    if (std::string(type.name) == "ERROR") errors.push_back(std::string(place) + " " + message);
  });
  ImageBuffer yuy2(Format::Yuy2, 2, 1);
  std::memset(yuy2.data(), 0x55, yuy2.size());
  yuy2.convertFrom(header(24), bitmap({{1, 2, 3, 4, 5, 6}}, 8));
  ImageBuffer bgra(Format::Bgra8Unorm, 2, 2);
  std::memset(bgra.data(), 0x55, bgra.size());
  // One row short of the height.
  bgra.convertFrom(header(32), bitmap({{1, 2, 3, 4, 5, 6, 7, 8}}, 8));
  ImageBuffer deep(Format::Rgba16Float, 1, 1);
  deep.convertFrom(header(8, Media::kFourccYuy2), bitmap({{1}}, 4));
  System::Log::resetHandler();

  EXPECT_EQ(errors, (std::vector<std::string>{
                        "Media::ImageBuffer::convertFrom can not convert DIB image data. bit=24 fcc=0000",
                        "Media::ImageBuffer::convertFrom can not convert DIB image data. bit=32 fcc=0000",
                        "Media::ImageBuffer::convertFrom can not convert DIB image data. bit=8 fcc=32595559"}));
  EXPECT_EQ(row(yuy2, 0, 4), (std::vector<std::uint8_t>{0, 0, 0, 0}));
  EXPECT_EQ(row(bgra, 1, 8), (std::vector<std::uint8_t>(8, 0)));
}

}  // namespace
