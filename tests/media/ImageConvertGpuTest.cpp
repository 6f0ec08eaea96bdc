// Uploads of every CPU image format into the frame's format and read-backs into each
// of them, on the GPU, against values worked out by hand. Images are 3 pixels wide (YUY2
// then ends in half a block) and their rows lie at a pitch of 32 bytes, longer than a
// row, so a conversion that ignores the pitch or the pair order shows.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <vector>

#include "media/ColorTableText.h"
#include "media/DeviceGpu.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ResourceConvert.h"
#include "media/image/YUVformat.h"
#include "media/pass/FramePasses.h"
#include "system/Exception.h"
#include "system/IniFile.h"

namespace {

using Media::ConvertParameters;
using Media::Format;
using Media::ImageBuffer;
using MediaTest::gpu;
using MediaTest::onGpu;

constexpr ConvertParameters kBt601Full{1, true};
constexpr ConvertParameters kBt709{2, false};

class ImageConvertGpu : public ::testing::Test {
 protected:
  void SetUp() override {
    MEDIA_REQUIRE_GPU();
    ini_.loadMemory(MediaTest::kColorTableText);
    colors_ = std::make_unique<Media::YUVformat>(ini_);
    onGpu([&] { passes_ = std::make_unique<Media::FramePasses>(gpu(), 64, 64); });
    convert_ = converter({});
  }

  std::unique_ptr<Media::ResourceConvert> converter(ConvertParameters output) {
    return std::make_unique<Media::ResourceConvert>(gpu(), *passes_, *colors_, output);
  }

  // The frame an image becomes, as floats.
  std::vector<float> upload(const ImageBuffer& image, ConvertParameters parameters = {}) {
    Media::ResourceBuffer frame(*convert_, image, parameters);
    EXPECT_EQ(frame.format(), Format::Rgba16Float);
    std::vector<float> pixels;
    onGpu([&] { pixels = MediaTest::fromHalfPixels(MediaTest::readBack(frame)); });
    return pixels;
  }

  // A frame of premultiplied pixels, one row, drawn into a render buffer.
  std::unique_ptr<Media::RenderBuffer> frame(const std::vector<float>& pixels) {
    const auto width = static_cast<std::uint32_t>(pixels.size() / 4);
    auto buffer = std::make_unique<Media::RenderBuffer>(gpu(), width, 1);
    onGpu([&] {
      Media::ResourceBuffer source(gpu(), width, 1, Format::Rgba16Float, MediaTest::toHalfPixels(pixels));
      passes_->pixelShader(Media::FramePass::Copy).draw(*buffer, {&source});
    });
    return buffer;
  }

  System::IniFile ini_;
  std::unique_ptr<Media::YUVformat> colors_;
  std::unique_ptr<Media::FramePasses> passes_;
  std::unique_ptr<Media::ResourceConvert> convert_;
};

// An image of `format` whose rows hold `row` (its bytes repeated for each row).
template <class T>
ImageBuffer image(Format format, std::uint32_t width, std::uint32_t height, std::initializer_list<T> row) {
  ImageBuffer result(format, width, height);
  result.clear();
  for (std::uint32_t y = 0; y < height; ++y) std::memcpy(result.row(y), std::data(row), row.size() * sizeof(T));
  return result;
}

template <class T>
std::vector<T> rowOf(const ImageBuffer& image, std::uint32_t y, std::size_t count) {
  std::vector<T> values(count);
  std::memcpy(values.data(), image.row(y), count * sizeof(T));
  return values;
}

void expectPixels(const std::vector<float>& actual, std::uint32_t y, std::uint32_t width,
                  std::initializer_list<float> expected) {
  ASSERT_GE(actual.size(), (y + 1) * width * 4);
  std::size_t i = y * width * 4;
  for (float value : expected) {
    EXPECT_NEAR(actual[i], value, 2e-3 + 1e-3 * std::abs(value)) << "component " << i;
    ++i;
  }
}

TEST_F(ImageConvertGpu, RgbImagesBecomePremultipliedWhateverTheirByteOrder) {
  // Straight 255, 128, 0 at alpha 128: colour times 128/255 = 0.50196.
  const std::vector<float> rgba = upload(image<std::uint8_t>(Format::Rgba8Unorm, 3, 2, {255, 128, 0, 128}));
  const std::vector<float> bgra = upload(image<std::uint8_t>(Format::Bgra8Unorm, 3, 2, {0, 128, 255, 128}));
  for (std::uint32_t y = 0; y < 2; ++y) {
    expectPixels(rgba, y, 3, {0.50196f, 0.25196f, 0.0f, 0.50196f});
    expectPixels(bgra, y, 3, {0.50196f, 0.25196f, 0.0f, 0.50196f});
  }
  // The fourth byte of BGRX is spare: the image is opaque.
  const std::vector<float> bgrx = upload(image<std::uint8_t>(Format::Bgrx8Unorm, 3, 2, {0, 128, 255, 0}));
  expectPixels(bgrx, 1, 3, {1.0f, 0.50196f, 0.0f, 1.0f});
  // 16-bit RGBA is premultiplied already and is copied: 32768 / 65535 = 0.500008.
  const std::vector<float> pa64 = upload(image<std::uint16_t>(Format::Rgba16Unorm, 3, 2, {65535, 32768, 0, 65535}));
  expectPixels(pa64, 1, 3, {1.0f, 0.500008f, 0.0f, 1.0f});
  // An image in the frame's own format goes up as it stands.
  const std::vector<float> same = upload(
      image<_Float16>(Format::Rgba16Float, 3, 2, {_Float16(-0.5f), _Float16(2.0f), _Float16(0.25f), _Float16(1.0f)}));
  expectPixels(same, 1, 3, {-0.5f, 2.0f, 0.25f, 1.0f});
}

TEST_F(ImageConvertGpu, Yc48ReadsThroughTheColourMatrixOfItsEntry) {
  // Y 4096 is white; Y 2048, Cr 1024 (0.25) under BT.601: R = 0.5 + 1.402 * 0.25,
  // G = 0.5 - 0.714136 * 0.25, B = 0.5. The fourth word is ignored: alpha is 1.
  const std::vector<float> pixels =
      upload(image<std::int16_t>(Format::Rgba16Snorm, 3, 2, {4096, 0, 0, 0, 2048, 0, 1024, 0, 0, 0, 0, 0}));
  expectPixels(pixels, 1, 3, {1.0f, 1.0f, 1.0f, 1.0f, 0.8505f, 0.321466f, 0.5f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f});
}

TEST_F(ImageConvertGpu, Yuy2PairsShareTheirChromaAndAnOddWidthEndsInHalfABlock) {
  // Limited BT.601: Y0 235 and Y1 16 over neutral chroma are white and black; the third
  // pixel, Y 81, Cb 90, Cr 240: y = 65/219, cb = -38/224, cr = 112/224, so
  // R = y + 1.402 cr = 0.997804, G = y - 0.344136 cb - 0.714136 cr = -0.001884,
  // B = y + 1.772 cb = -0.003803. Its pair's Y1 (200) is padding.
  const std::vector<float> pixels =
      upload(image<std::uint8_t>(Format::Yuy2, 3, 2, {235, 128, 16, 128, 81, 90, 200, 240}));
  for (std::uint32_t y = 0; y < 2; ++y) {
    expectPixels(pixels, y, 3,
                 {1.0f, 1.0f, 1.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.997804f, -0.001884f, -0.003803f, 1.0f});
  }
}

TEST_F(ImageConvertGpu, Yuy2TakesTheRangeAndColourSpaceItIsGivenOrItsHeightChooses) {
  // Full BT.601, Y 76 and 255 over Cb 85, Cr 255: cb = -43/255, cr = 127/255;
  // Y 76: (0.996290, 0.000402, -0.000769); Y 255: (1.698251, 0.702363, 0.701192).
  const std::vector<float> full = upload(image<std::uint8_t>(Format::Yuy2, 2, 1, {76, 85, 255, 255}), kBt601Full);
  expectPixels(full, 0, 2, {0.996290f, 0.000402f, -0.000769f, 1.0f, 1.698251f, 0.702363f, 0.701192f, 1.0f});
  // Limited BT.709, Y 63, Cb 102, Cr 240: y = 47/219, cb = -26/224, cr = 112/224;
  // R = y + 1.5748 cr = 1.002012, G = y - 0.187324 cb - 0.468124 cr = 0.002293,
  // B = y + 1.8556 cb = -0.000770: given by index, and chosen for a picture 720 high.
  const ImageBuffer small = image<std::uint8_t>(Format::Yuy2, 2, 1, {63, 102, 63, 240});
  expectPixels(upload(small, kBt709), 0, 2, {1.002012f, 0.002293f, -0.000770f, 1.0f});
  expectPixels(upload(image<std::uint8_t>(Format::Yuy2, 2, 720, {63, 102, 63, 240})), 0, 2,
               {1.002012f, 0.002293f, -0.000770f, 1.0f});
  // BT.601 for the small one: R = y + 1.402 cr = 0.915612, B = y + 1.772 cb = 0.008934.
  expectPixels(upload(small), 0, 2, {0.915612f, -0.102512f, 0.008934f, 1.0f});
}

TEST_F(ImageConvertGpu, ReadBackToEightBitRgbKeepsOrWithdrawsAlphaAsAsked) {
  // Premultiplied (0.25, 0.05, 0.15) at alpha 0.25, as half floats; red 0.75 above its
  // alpha 0.25; transparent black. Straight: 1.0, 0.19995, 0.60010 -> 255, 51, 153,
  // alpha 64. Premultiplied, clamped to alpha: 64, 13, 38; the second red -> 64.
  auto source = frame({0.25f, 0.05f, 0.15f, 0.25f, 0.75f, 0.0f, 0.0f, 0.25f, 0.0f, 0.0f, 0.0f, 0.0f});
  EXPECT_EQ(rowOf<std::uint8_t>(*source->toImageBuffer(*convert_, Format::Bgra8Unorm, true), 0, 12),
            (std::vector<std::uint8_t>{153, 51, 255, 64, 0, 0, 255, 64, 0, 0, 0, 0}));
  EXPECT_EQ(rowOf<std::uint8_t>(*source->toImageBuffer(*convert_, Format::Bgra8Unorm, false), 0, 12),
            (std::vector<std::uint8_t>{38, 13, 64, 64, 0, 0, 64, 64, 0, 0, 0, 0}));
  EXPECT_EQ(rowOf<std::uint8_t>(*source->toImageBuffer(*convert_, Format::Rgba8Unorm, true), 0, 12),
            (std::vector<std::uint8_t>{255, 51, 153, 64, 255, 0, 0, 64, 0, 0, 0, 0}));
  // BGRX is made opaque: the colour stays premultiplied, over black (0.75 -> 191).
  EXPECT_EQ(rowOf<std::uint8_t>(*source->toImageBuffer(*convert_, Format::Bgrx8Unorm, false), 0, 12),
            (std::vector<std::uint8_t>{38, 13, 64, 255, 0, 0, 191, 255, 0, 0, 0, 255}));
  // 16-bit RGBA is a copy: 0.25 * 65535 = 16383.75, 0.049988 * 65535 = 3275.95.
  EXPECT_EQ(rowOf<std::uint16_t>(*source->toImageBuffer(*convert_, Format::Rgba16Unorm, false), 0, 4),
            (std::vector<std::uint16_t>{16384, 3276, 9832, 16384}));
  // The frame's own format is read as it is.
  const std::shared_ptr<ImageBuffer> raw = source->toImageBuffer();
  EXPECT_EQ(raw->format(), Format::Rgba16Float);
  EXPECT_EQ(static_cast<float>(rowOf<_Float16>(*raw, 0, 8)[4]), 0.75f);
}

TEST_F(ImageConvertGpu, ReadBackToYuy2TakesTheLeftChromaOfEachPair) {
  // Red, white, black under limited BT.601: red Y = 16 + 219 * 0.299 = 81.48,
  // Cb = 128 - 224 * 0.168736 = 90.20, Cr = 128 + 224 * 0.5 = 240; white 235 over 128.
  // The odd last pixel repeats itself as Y1.
  auto source = frame({1, 0, 0, 1, 1, 1, 1, 1, 0, 0, 0, 1});
  const std::shared_ptr<ImageBuffer> yuy2 = source->toYUY2(*convert_);
  EXPECT_EQ(yuy2->format(), Format::Yuy2);
  EXPECT_EQ(rowOf<std::uint8_t>(*yuy2, 0, 8), (std::vector<std::uint8_t>{81, 90, 235, 240, 16, 128, 16, 128}));
  // Full BT.709: red Y = 255 * 0.2126 = 54.2, Cb = 128 - 255 * 0.114572 = 98.8, Cr over 255.
  auto bt709 = converter({2, true});
  EXPECT_EQ(rowOf<std::uint8_t>(*source->toImageBuffer(*bt709, Format::Yuy2, false), 0, 4),
            (std::vector<std::uint8_t>{54, 99, 255, 255}));
}

TEST_F(ImageConvertGpu, ReadBackToYc48ScalesToItsRange) {
  // White is Y 4096 over zero chroma; red is Y 0.299 * 4096 = 1224.7, Cb -0.168736 * 4096
  // = -691.1, Cr 2048.
  auto source = frame({1, 1, 1, 1, 1, 0, 0, 1});
  const std::vector<std::int16_t> words =
      rowOf<std::int16_t>(*source->toImageBuffer(*convert_, Format::Rgba16Snorm, false), 0, 8);
  EXPECT_EQ((std::vector<std::int16_t>{words[0], words[1], words[2], words[4], words[5], words[6]}),
            (std::vector<std::int16_t>{4096, 0, 0, 1225, -691, 2048}));
}

TEST_F(ImageConvertGpu, ImagesComeBackAsTheyWentUp) {
  // Straight BGRA survives premultiplication and back, down to an alpha of 1/255.
  const ImageBuffer bgra =
      image<std::uint8_t>(Format::Bgra8Unorm, 3, 2, {10, 200, 30, 255, 10, 200, 30, 1, 7, 99, 250, 128});
  Media::ResourceBuffer frame(*convert_, bgra, {});
  Media::RenderBuffer target(gpu(), 3, 2);
  onGpu([&] { passes_->pixelShader(Media::FramePass::Copy).draw(target, {&frame}); });
  const std::shared_ptr<ImageBuffer> back = target.toImageBuffer(*convert_, Format::Bgra8Unorm, true);
  for (std::uint32_t y = 0; y < 2; ++y) {
    const std::vector<std::uint8_t> row = rowOf<std::uint8_t>(*back, y, 12);
    const std::vector<std::uint8_t> sent = rowOf<std::uint8_t>(bgra, y, 12);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(row[i], sent[i], 1) << "byte " << i << " of row " << y;
  }
  // Limited YUY2 within the gamut: grey, and green (Y 145, Cb 54, Cr 34) beside it.
  const ImageBuffer yuy2 = image<std::uint8_t>(Format::Yuy2, 4, 1, {126, 128, 126, 128, 145, 54, 145, 34});
  Media::ResourceBuffer yuvFrame(*convert_, yuy2, {});
  Media::RenderBuffer wide(gpu(), 4, 1);
  onGpu([&] { passes_->pixelShader(Media::FramePass::Copy).draw(wide, {&yuvFrame}); });
  const std::vector<std::uint8_t> yuvBack = rowOf<std::uint8_t>(*wide.toYUY2(*convert_), 0, 8);
  const std::vector<std::uint8_t> yuvSent = rowOf<std::uint8_t>(yuy2, 0, 8);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_NEAR(yuvBack[i], yuvSent[i], 1) << "byte " << i;
}

TEST_F(ImageConvertGpu, PairsOfFormatsWithoutAConversionAreRefused) {
  const auto expectRefusal = [](const auto& convert, const char* note) {
    try {
      convert();
      ADD_FAILURE() << "no exception for " << note;
    } catch (const System::NoteException& e) {
      EXPECT_EQ(e.message(), "unsupported convert format.");
      EXPECT_NE(std::string(e.what()).find(note), std::string::npos) << e.what();
      EXPECT_NE(std::string(e.what()).find("Media::ResourceConvert::convert"), std::string::npos);
    }
  };
  Media::RenderBuffer bytes(gpu(), 2, 1, Format::Rgba8Unorm);
  expectRefusal([&] { bytes.toYUY2(*convert_); }, "DXGI format 28 -> 107");
  auto frame = this->frame({0, 0, 0, 1, 0, 0, 0, 1});
  expectRefusal([&] { frame->toImageBuffer(*convert_, Format::A8Unorm, false); }, "DXGI format 10 -> 65");
  Media::ResourceBuffer target(gpu(), 2, 1, Format::Rgba8Unorm);
  const ImageBuffer bgra = image<std::uint8_t>(Format::Bgra8Unorm, 2, 1, {0, 0, 0, 0});
  expectRefusal([&] { convert_->convert(bgra, target, {}); }, "DXGI format 87 -> 28");
}

}  // namespace
