// The reader of uncompressed BMP and TGA pictures over files written byte by byte here:
// the row orders, four bytes a pixel, what it leaves to other readers, and headers that
// promise more than their file holds.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "media/image/ImageBuffer.h"
#include "plugin/ImageFileReader.h"
#include "plugin/InputFile.h"
#include "support/MediaFiles.h"
#include "support/TempDirectory.h"

namespace {

using Media::Format;

std::vector<std::uint8_t> rowOf(const Media::ImageBuffer& image, std::uint32_t y) {
  const auto* row = reinterpret_cast<const std::uint8_t*>(image.row(y));
  return std::vector<std::uint8_t>(row, row + image.width() * 4);
}

class ImageFileReaderTest : public ::testing::Test {
 protected:
  std::shared_ptr<Plugin::InputFile> open(const std::string& name, const std::string& bytes) {
    return reader_.open(directory_.writeFile(name, bytes).wstring(), 0);
  }
  std::shared_ptr<Media::ImageBuffer> read(const std::string& name, const std::string& bytes) {
    const auto file = open(name, bytes);
    return file ? file->readVideo(0) : nullptr;
  }

  TestSupport::TempDirectory directory_;
  Plugin::ImageFileReader reader_;
};

TEST_F(ImageFileReaderTest, BmpRowsComeOutTopFirstWithFourBytesAPixel) {
  // Three pixels a row: 24-bit rows are padded to 12 bytes in the file.
  const std::string bottom = "\x01\x02\x03\x04\x05\x06\x07\x08\x09";
  const std::string top = "\x11\x12\x13\x14\x15\x16\x17\x18\x19";
  const auto file = open("picture.BMP", PluginTest::makeBmp(3, 2, 24, {bottom, top}));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->flags, Plugin::InputFile::Video);
  EXPECT_EQ(file->frameCount, 1);
  EXPECT_EQ(file->rate, 1u);
  EXPECT_EQ(file->scale, 1u);
  EXPECT_EQ(file->pixelFormat, Format::Bgrx8Unorm);
  EXPECT_EQ(file->width, 3u);
  EXPECT_EQ(file->height, 2u);
  const auto image = file->readVideo(0);
  EXPECT_EQ(rowOf(*image, 0), (std::vector<std::uint8_t>{0x11, 0x12, 0x13, 0, 0x14, 0x15, 0x16, 0, 0x17, 0x18, 0x19, 0}));
  EXPECT_EQ(rowOf(*image, 1), (std::vector<std::uint8_t>{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0}));

  const std::string first = "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c";
  const std::string second = "\x21\x22\x23\x24\x25\x26\x27\x28\x29\x2a\x2b\x2c";
  const auto bgra = read("a.bmp", PluginTest::makeBmp(3, 2, 32, {first, second}));
  ASSERT_TRUE(bgra);
  EXPECT_EQ(bgra->format(), Format::Bgra8Unorm);
  EXPECT_EQ(rowOf(*bgra, 0), std::vector<std::uint8_t>(second.begin(), second.end()));
  // A negative height stores the top row first.
  const auto topDown = read("b.bmp", PluginTest::makeBmp(3, -2, 32, {first, second}));
  ASSERT_TRUE(topDown);
  EXPECT_EQ(rowOf(*topDown, 0), std::vector<std::uint8_t>(first.begin(), first.end()));
}

TEST_F(ImageFileReaderTest, TgaRowsFollowTheOriginBit) {
  const std::string pixels24 = "\x01\x02\x03\x04\x05\x06\x11\x12\x13\x14\x15\x16";
  const auto bottomUp = read("a.tga", PluginTest::makeTga(2, 2, 24, 0, pixels24));
  ASSERT_TRUE(bottomUp);
  EXPECT_EQ(bottomUp->format(), Format::Bgrx8Unorm);
  EXPECT_EQ(rowOf(*bottomUp, 0), (std::vector<std::uint8_t>{0x11, 0x12, 0x13, 0, 0x14, 0x15, 0x16, 0}));
  // The image id and the colour map lie before the pixels.
  const auto topFirst = read("b.tga", PluginTest::makeTga(2, 2, 24, 0x20, pixels24, 2, "id", 2));
  ASSERT_TRUE(topFirst);
  EXPECT_EQ(rowOf(*topFirst, 0), (std::vector<std::uint8_t>{1, 2, 3, 0, 4, 5, 6, 0}));

  const std::string pixels32 = "\x01\x02\x03\x80\x11\x12\x13\x81";
  const auto bgra = read("c.tga", PluginTest::makeTga(1, 2, 32, 0x28, pixels32));
  ASSERT_TRUE(bgra);
  EXPECT_EQ(bgra->format(), Format::Bgra8Unorm);
  EXPECT_EQ(rowOf(*bgra, 0), (std::vector<std::uint8_t>{1, 2, 3, 0x80}));
  EXPECT_EQ(rowOf(*bgra, 1), (std::vector<std::uint8_t>{0x11, 0x12, 0x13, 0x81}));
}

TEST_F(ImageFileReaderTest, CodedAndPalettePicturesAreLeftToOtherReaders) {
  const std::string row(12, '\x10');
  EXPECT_FALSE(open("rle.bmp", PluginTest::makeBmp(3, 1, 24, {row}, 1)));
  EXPECT_FALSE(open("palette.bmp", PluginTest::makeBmp(12, 1, 8, {row})));
  std::string largerHeader = PluginTest::makeBmp(3, 1, 24, {row});
  largerHeader[14] = 124;
  EXPECT_FALSE(open("v5.bmp", largerHeader));
  const std::string pixels(12, '\x10');
  EXPECT_FALSE(open("rle.tga", PluginTest::makeTga(2, 2, 24, 0, pixels, 10)));
  EXPECT_FALSE(open("palette.tga", PluginTest::makeTga(2, 2, 24, 0, pixels, 1)));
  EXPECT_FALSE(open("grey.tga", PluginTest::makeTga(2, 2, 24, 0, pixels, 3)));
  EXPECT_FALSE(open("mirrored.tga", PluginTest::makeTga(2, 2, 24, 0x10, pixels)));
  EXPECT_FALSE(open("sixteen.tga", PluginTest::makeTga(2, 2, 16, 0, pixels)));
  EXPECT_FALSE(open("picture.png", PluginTest::makeBmp(3, 1, 24, {row})));
}

TEST_F(ImageFileReaderTest, HeadersThatPromiseMoreThanTheFileHoldsAreRefused) {
  const std::string row(12, '\x10');
  EXPECT_FALSE(open("huge.bmp", PluginTest::makeBmp(16384, 16384, 32, {row})));
  EXPECT_FALSE(open("wide.bmp", PluginTest::makeBmp(16385, 1, 32, {row})));
  EXPECT_FALSE(open("empty.bmp", PluginTest::makeBmp(0, 1, 32, {row})));
  EXPECT_FALSE(open("lowest.bmp", PluginTest::makeBmp(1, INT32_MIN, 32, {row})));
  EXPECT_FALSE(open("huge.tga", PluginTest::makeTga(65535, 65535, 32, 0, row)));
  EXPECT_FALSE(open("large.tga", PluginTest::makeTga(1000, 1000, 32, 0, row)));
  std::string offset = PluginTest::makeBmp(3, 1, 24, {row});
  offset[10] = '\xff';
  offset[13] = '\x7f';
  EXPECT_FALSE(open("offset.bmp", offset));

  for (const auto& [name, whole] : {std::pair{std::string("cut.bmp"), PluginTest::makeBmp(3, 1, 24, {row})},
                                    std::pair{std::string("cut.tga"), PluginTest::makeTga(2, 2, 24, 0, row)}}) {
    for (std::size_t length = 0; length < whole.size(); ++length) EXPECT_FALSE(open(name, whole.substr(0, length)));
    // A picture cut after it was opened reads as nothing.
    const auto file = open(name, whole);
    ASSERT_TRUE(file);
    std::filesystem::resize_file(directory_.path() / name, whole.size() - 1);
    EXPECT_EQ(file->readVideo(0), nullptr);
  }
}

}  // namespace
