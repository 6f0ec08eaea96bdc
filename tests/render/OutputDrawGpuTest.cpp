// The output effects' drawing on OpenGL (llvmpipe where no GPU is present): every blend
// mode against the CPU reference on both paths, where a turned and scaled quad lands,
// the items that leave nothing to draw, and the whole-pixel copies of 基本出力 and of a
// direct image. Half-float frames; tolerance 2e-3 relative plus 1e-3 absolute.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "edit/EditService.h"
#include "edit/Object.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/output/SimpleOutput.h"
#include "effect/output/VideoOutput.h"
#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/pass/FramePasses.h"
#include "media/reference/BlendModeReference.h"
#include "media/reference/PassImage.h"
#include "platform/egl_gl/GlBackendFactory.h"
#include "render/ObjectContext.h"
#include "render/RenderVideoWorker.h"

namespace {

using Media::PassImage;
using Media::Rgba;

// Premultiplied pixels exact in half precision: alphas 0, below the discard limit, a
// quarter, a half and 1, colours at eighths of the alpha, spread so neighbours differ.
PassImage pattern(std::uint32_t width, std::uint32_t height, std::uint32_t seed) {
  constexpr float kAlphas[] = {0.0f, 0.00048828125f, 0.25f, 0.5f, 1.0f};
  PassImage image(width, height);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const std::uint32_t n = x * 7 + y * 13 + seed * 5;
      const float a = kAlphas[n % 5];
      image.set(x, y, {a * static_cast<float>(n % 8) / 8, a * static_cast<float>((n / 3) % 9) / 8,
                       a * static_cast<float>((n / 7) % 9) / 8, a});
    }
  }
  return image;
}

Rgba sourceOver(const Rgba& s, const Rgba& d) {
  return {s[0] + d[0] * (1 - s[3]), s[1] + d[1] * (1 - s[3]), s[2] + d[2] * (1 - s[3]), s[3] + d[3] * (1 - s[3])};
}

// The frame after drawing `source` over it pixel for pixel: modes below 20 lie over the
// frame, 20 and up replace it (or, where `replacing` is false, draw as mode 0).
PassImage expectedBlend(const PassImage& frame, const PassImage& source, std::int32_t mode, float opacity,
                        bool replacing) {
  PassImage result = frame;
  if (!replacing && mode >= 20) mode = 0;
  for (std::uint32_t y = 0; y < frame.height; ++y) {
    for (std::uint32_t x = 0; x < frame.width; ++x) {
      Rgba out;
      if (!Media::blendModeReference(mode, opacity, source.at(x, y), frame.at(x, y), out)) continue;
      result.set(x, y, mode >= 20 ? out : sourceOver(out, frame.at(x, y)));
    }
  }
  return result;
}

void expectNear(const PassImage& actual, const PassImage& expected) {
  int misses = 0;
  for (std::size_t i = 0; i < expected.pixels.size() && misses < 4; ++i) {
    const float want = expected.pixels[i];
    if (std::abs(actual.pixels[i] - want) > 2e-3f * std::abs(want) + 1e-3f) {
      ADD_FAILURE() << "pixel " << i / 4 % expected.width << "," << i / 4 / expected.width << " channel " << i % 4
                    << ": " << actual.pixels[i] << " instead of " << want;
      ++misses;
    }
  }
}

class OutputDraw : public ::testing::Test {
 protected:
  void SetUp() override {
    try {
      device_ = std::make_unique<Media::GraphicsDevice>(Platform::createGlBackend, Media::DeviceSettings{});
    } catch (const std::exception& failure) {
      GTEST_SKIP() << "EGL cannot start: " << failure.what();
    }
    device_->run([this] { passes_ = std::make_unique<Media::FramePasses>(*device_, 16, 16); });
    worker_ = std::make_unique<Render::RenderVideoWorker>(*device_, edit_, Render::VideoWorkerSettings{1 << 20, {}, nullptr});
    worker_->setFramePasses(passes_.get());
    context_.worker = worker_.get();
    context_.object = std::make_shared<Edit::Object>();
  }
  void TearDown() override {
    if (worker_) worker_->stop();
    if (device_) {
      device_->run([this] {
        video_.reset();
        simple_.reset();
        passes_.reset();
      });
    }
  }

  std::unique_ptr<Media::ResourceBuffer> upload(const PassImage& image) {
    const std::vector<_Float16> halves(image.pixels.begin(), image.pixels.end());
    std::vector<std::byte> bytes(halves.size() * sizeof(_Float16));
    std::memcpy(bytes.data(), halves.data(), bytes.size());
    return std::make_unique<Media::ResourceBuffer>(*device_, image.width, image.height, Media::Format::Rgba16Float,
                                                   std::move(bytes));
  }
  // Draws with `draw` onto a frame that holds `frame`, and reads the frame back.
  template <class Draw>
  PassImage drawOn(const PassImage& frame, const PassImage& source, Draw draw) {
    PassImage result(frame.width, frame.height);
    device_->run([&] {
      Media::RenderBuffer target(*device_, frame.width, frame.height, Media::Format::Rgba16Float);
      auto start = upload(frame);
      auto image = upload(source);
      passes_->run(Media::FramePass::Copy, target, {start.get()});
      context_.target = &target;
      draw(target, *image);
      const std::vector<std::byte> bytes = target.readPixels();
      std::vector<_Float16> halves(bytes.size() / sizeof(_Float16));
      std::memcpy(halves.data(), bytes.data(), bytes.size());
      result.pixels.assign(halves.begin(), halves.end());
    });
    return result;
  }
  static void set(Effect::EffectBase& effect, const wchar_t* name, double value) {
    effect.item<Effect::EffectItemNumber>(name).setValue(0, value);
  }
  static bool drawn(const PassImage& image, std::uint32_t x, std::uint32_t y) { return image.at(x, y)[3] > 0.5f; }

  std::unique_ptr<Media::GraphicsDevice> device_;
  std::unique_ptr<Media::FramePasses> passes_;
  Edit::EditService edit_;
  std::unique_ptr<Render::RenderVideoWorker> worker_;
  Render::ObjectContext context_;
  std::unique_ptr<Effect::VideoOutput> video_ = std::make_unique<Effect::VideoOutput>();
  std::unique_ptr<Effect::SimpleOutput> simple_ = std::make_unique<Effect::SimpleOutput>();
};

TEST_F(OutputDraw, EveryBlendModeMatchesTheReferenceOnTheQuadAndTheCopy) {
  // Odd sizes, so that pixel centres and texel centres agree only if the quad is placed
  // to the half pixel.
  const PassImage frame = pattern(9, 7, 1);
  const PassImage source = pattern(9, 7, 2);
  for (const std::int32_t mode : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 20, 21, 22, 23}) {
    for (const float opacity : {0.0f, 0.0625f, 1.0f}) {
      SCOPED_TRACE("mode " + std::to_string(mode) + ", opacity " + std::to_string(opacity));
      Render::ObjectView view;
      view.alpha = opacity;
      view.blend = mode;
      // The quad cannot replace pixels: 20 and up draw as 通常 there.
      expectNear(drawOn(frame, source,
                        [&](Media::RenderBuffer& target, Media::ResourceBuffer& image) {
                          video_->drawImage(context_, view, target, image);
                        }),
                 expectedBlend(frame, source, mode, opacity, false));
      expectNear(drawOn(frame, source,
                        [&](Media::RenderBuffer& target, Media::ResourceBuffer& image) {
                          video_->drawDirect(context_, view, target, image);
                        }),
                 expectedBlend(frame, source, mode, opacity, true));
    }
  }
}

TEST_F(OutputDraw, ATurnedAndScaledQuadLandsWhereItsMatricesPutIt) {
  // A 16 by 8 image, twice as wide, turned a quarter clockwise on screen and moved by
  // (5, -3): x from -4 to 4 and y from -16 to 16 about (5, -3), so on a 64 by 64 frame
  // columns 33 to 40 and rows 13 to 44.
  PassImage opaque(16, 8);
  for (std::size_t i = 0; i < opaque.pixels.size(); ++i) opaque.pixels[i] = 1.0f;
  Render::ObjectView view;
  view.x = 5;
  view.y = -3;
  view.zoomX = 2;
  view.rotationZ = 90;
  const PassImage result = drawOn(PassImage(64, 64), opaque, [&](Media::RenderBuffer& target, Media::ResourceBuffer& image) {
    video_->drawImage(context_, view, target, image);
  });
  for (const auto& [x, y] : {std::pair{37u, 29u}, {33u, 13u}, {40u, 13u}, {33u, 44u}, {40u, 44u}}) {
    EXPECT_TRUE(drawn(result, x, y)) << x << "," << y;
  }
  for (const auto& [x, y] : {std::pair{32u, 29u}, {41u, 29u}, {37u, 12u}, {37u, 45u}, {20u, 29u}}) {
    EXPECT_FALSE(drawn(result, x, y)) << x << "," << y;
  }
}

TEST_F(OutputDraw, FullTransparencyOrAspectDrawsNothingAndHalfAspectHalvesTheWidth) {
  PassImage opaque(16, 8);
  for (std::size_t i = 0; i < opaque.pixels.size(); ++i) opaque.pixels[i] = 1.0f;
  auto output = [&](Media::RenderBuffer& target, Media::ResourceBuffer& image) {
    video_->outputVideo(context_, target, image);
  };
  const PassImage empty(32, 32);
  set(*video_, L"透明度", 100);
  EXPECT_EQ(drawOn(empty, opaque, output).pixels, empty.pixels);
  set(*video_, L"透明度", 0);
  set(*video_, L"縦横比", 100);
  EXPECT_EQ(drawOn(empty, opaque, output).pixels, empty.pixels);
  set(*video_, L"縦横比", -100);
  EXPECT_EQ(drawOn(empty, opaque, output).pixels, empty.pixels);
  // 50: eight columns wide about the centre, 12 to 19; the height stays, rows 12 to 19.
  set(*video_, L"縦横比", 50);
  const PassImage half = drawOn(empty, opaque, output);
  EXPECT_TRUE(drawn(half, 12, 12) && drawn(half, 19, 19));
  EXPECT_FALSE(drawn(half, 11, 15) || drawn(half, 20, 15) || drawn(half, 15, 11) || drawn(half, 15, 20));
}

TEST_F(OutputDraw, WholePixelOutputsCopyTheImageUnresampled) {
  const PassImage source = pattern(5, 4, 3);
  const PassImage empty(16, 12);
  // The image centred, (16 - 5) / 2 = 5 from the left, (12 - 4) / 2 = 4 from the top,
  // then moved by the position.
  auto shifted = [&](std::int32_t dx, std::int32_t dy) {
    PassImage expected(16, 12);
    for (std::uint32_t y = 0; y < 4; ++y) {
      for (std::uint32_t x = 0; x < 5; ++x) expected.set(5 + dx + x, 4 + dy + y, source.at(x, y));
    }
    return expected;
  };
  // 基本出力 at 1.5, -1.5 rounds away from zero to 2, -2 and copies.
  set(*simple_, L"X", 1.5);
  set(*simple_, L"Y", -1.5);
  expectNear(drawOn(empty, source,
                    [&](Media::RenderBuffer& target, Media::ResourceBuffer& image) {
                      simple_->outputVideo(context_, target, image);
                    }),
             shifted(2, -2));
  // A direct image's position is truncated.
  context_.direct = true;
  context_.view.x = -2.7f;
  context_.view.y = 3.2f;
  expectNear(drawOn(empty, source,
                    [&](Media::RenderBuffer& target, Media::ResourceBuffer& image) {
                      video_->outputVideo(context_, target, image);
                    }),
             shifted(-2, 3));
}

}  // namespace
