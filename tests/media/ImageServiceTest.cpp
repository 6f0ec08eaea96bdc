// Image files through the service and Qt's readers and writers: pictures saved and
// loaded back, bitmaps and GIFs written byte by byte here, and files that are no picture.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "media/image/ImageBuffer.h"
#include "media/image/ImageService.h"
#include "platform/qt/QtImageCodec.h"
#include "support/TempDirectory.h"
#include "system/Exception.h"

namespace {

using Media::Format;
using Media::ImageBuffer;

class ImageFiles : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { Media::ImageService::setCodecFactory(Platform::createQtImageCodec); }

  std::wstring path(const std::string& name) const { return (directory_.path() / name).wstring(); }

  TestSupport::TempDirectory directory_;
  Media::ImageService service_;
};

ImageBuffer filled(Format format, std::uint32_t width, std::uint32_t height,
                   const std::vector<std::uint8_t>& pixel) {
  ImageBuffer image(format, width, height);
  image.clear();
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      std::uint8_t* out = reinterpret_cast<std::uint8_t*>(image.row(y)) + x * 4;
      for (std::size_t i = 0; i < 4; ++i) out[i] = static_cast<std::uint8_t>(pixel[i] + x * 10 + y * 20);
    }
  }
  return image;
}

std::vector<std::uint8_t> pixelAt(const ImageBuffer& image, std::uint32_t x, std::uint32_t y) {
  const auto* p = reinterpret_cast<const std::uint8_t*>(image.row(y)) + x * 4;
  return {p, p + 4};
}

TEST_F(ImageFiles, PngKeepsStraightRgbaExactly) {
  const ImageBuffer rgba = filled(Format::Rgba8Unorm, 5, 3, {200, 100, 50, 60});
  service_.saveToFile(path("a.png"), Media::ImageContainer::Png, rgba, {});

  Format format = Format::Unknown;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  ASSERT_TRUE(service_.canLoadFile(path("a.png"), format, width, height));
  EXPECT_EQ(format, Format::Rgba8Unorm);
  EXPECT_EQ(width, 5u);
  EXPECT_EQ(height, 3u);
  const std::shared_ptr<ImageBuffer> loaded = service_.loadFromFile(path("a.png"));
  ASSERT_EQ(loaded->format(), Format::Rgba8Unorm);
  for (std::uint32_t y = 0; y < 3; ++y) {
    for (std::uint32_t x = 0; x < 5; ++x) EXPECT_EQ(pixelAt(*loaded, x, y), pixelAt(rgba, x, y)) << x << "," << y;
  }
}

TEST_F(ImageFiles, PngOfPremultipliedBgraLoadsStraight) {
  // B 32, G 64, R 96 at alpha 128 premultiplied: straight 64, 128, 191 (or a step off).
  ImageBuffer bgra(Format::Bgra8Unorm, 1, 1);
  const std::uint8_t pixel[] = {32, 64, 96, 128};
  std::memcpy(bgra.data(), pixel, 4);
  service_.saveToFile(path("p.png"), Media::ImageContainer::Png, bgra, {true, {}});
  const std::vector<std::uint8_t> loaded = pixelAt(*service_.loadFromFile(path("p.png")), 0, 0);
  EXPECT_NEAR(loaded[0], 191, 1);
  EXPECT_NEAR(loaded[1], 128, 1);
  EXPECT_NEAR(loaded[2], 64, 1);
  EXPECT_EQ(loaded[3], 128);
}

TEST_F(ImageFiles, JpegIsOpaqueAndTakesItsQuality) {
  // BGRX whose spare byte is 0: the picture is opaque all the same.
  const ImageBuffer bgrx = filled(Format::Bgrx8Unorm, 32, 32, {40, 120, 200, 0});
  service_.saveJpeg(bgrx, path("best.jpg"), 100);
  service_.saveJpeg(bgrx, path("worst.jpg"), 1);
  const std::shared_ptr<ImageBuffer> best = service_.loadFromFile(path("best.jpg"));
  const std::vector<std::uint8_t> corner = pixelAt(*best, 0, 0);
  EXPECT_NEAR(corner[0], 200, 6);
  EXPECT_NEAR(corner[1], 120, 6);
  EXPECT_NEAR(corner[2], 40, 6);
  EXPECT_EQ(corner[3], 255);
  EXPECT_LT(std::filesystem::file_size(directory_.path() / "worst.jpg"),
            std::filesystem::file_size(directory_.path() / "best.jpg") / 2);
}

TEST_F(ImageFiles, BitmapsAndGifsMadeByHandLoadTopRowFirst) {
  // A 24-bit bitmap, 2 by 2, bottom-up: its first row in the file is the picture's last.
  // File header (size 70, pixels at 54), then the 40-byte header: 2 by 2, 1 plane, 24 bits.
  std::string bmp("BM\x46\0\0\0\0\0\0\0\x36\0\0\0"
                  "\x28\0\0\0\x02\0\0\0\x02\0\0\0\x01\0\x18\0",
                  30);
  bmp += std::string(24, '\0');
  bmp += std::string("\x00\x00\xff" "\x00\xff\x00" "\x00\x00", 8);  // bottom: red, green
  bmp += std::string("\xff\x00\x00" "\xff\xff\xff" "\x00\x00", 8);  // top: blue, white
  directory_.writeFile("hand.bmp", bmp);
  const std::shared_ptr<ImageBuffer> bitmap = service_.loadFromFile(path("hand.bmp"));
  EXPECT_EQ(pixelAt(*bitmap, 0, 0), (std::vector<std::uint8_t>{0, 0, 255, 255}));
  EXPECT_EQ(pixelAt(*bitmap, 1, 0), (std::vector<std::uint8_t>{255, 255, 255, 255}));
  EXPECT_EQ(pixelAt(*bitmap, 0, 1), (std::vector<std::uint8_t>{255, 0, 0, 255}));
  EXPECT_EQ(pixelAt(*bitmap, 1, 1), (std::vector<std::uint8_t>{0, 255, 0, 255}));

  // A GIF of two pixels, red and blue, through Qt's GIF plug-in: no application object
  // is needed to find it.
  const std::string gif("GIF89a\x02\x00\x01\x00\x80\x00\x00"
                        "\xff\x00\x00\x00\x00\xff"
                        ",\x00\x00\x00\x00\x02\x00\x01\x00\x00"
                        "\x02\x02\x44\x0a\x00;",
                        35);
  directory_.writeFile("hand.gif", gif);
  const std::shared_ptr<ImageBuffer> two = service_.loadFromFile(path("hand.gif"));
  ASSERT_EQ(two->width(), 2u);
  EXPECT_EQ(pixelAt(*two, 0, 0), (std::vector<std::uint8_t>{255, 0, 0, 255}));
  EXPECT_EQ(pixelAt(*two, 1, 0), (std::vector<std::uint8_t>{0, 0, 255, 255}));
}

TEST_F(ImageFiles, WhatIsNoPictureIsRefusedWithTheReadersWord) {
  directory_.writeFile("text.png", "this is not a picture");
  Format format = Format::Unknown;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  EXPECT_FALSE(service_.canLoadFile(path("text.png"), format, width, height));
  EXPECT_FALSE(service_.canLoadFile(path("missing.png"), format, width, height));
  EXPECT_EQ(format, Format::Unknown);
  try {
    service_.loadFromFile(path("missing.png"));
    ADD_FAILURE() << "no exception";
  } catch (const System::NoteException& e) {
    EXPECT_EQ(e.message(), "QImageReader::read");
    EXPECT_NE(std::string(e.what()).find("missing.png"), std::string::npos) << e.what();
    EXPECT_NE(std::string(e.what()).find("Media::ImageService::loadFromFile"), std::string::npos);
  }
  const ImageBuffer yuy2(Format::Yuy2, 2, 2);
  EXPECT_THROW(service_.saveToFile(path("y.png"), Media::ImageContainer::Png, yuy2, {}), System::NoteException);
  // A folder that does not exist cannot take the file.
  const ImageBuffer rgba = filled(Format::Rgba8Unorm, 1, 1, {1, 2, 3, 4});
  EXPECT_THROW(service_.saveToFile(path("none/x.png"), Media::ImageContainer::Png, rgba, {}), System::NoteException);
}

}  // namespace
