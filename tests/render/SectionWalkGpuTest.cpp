// The walk over the layers on tiny scenes, drawn on OpenGL (llvmpipe where no GPU is
// present) by small effects made here: an input of one colour over some columns, an
// output that lays the image over the frame, and a filter that halves it. The pixels
// of the finished frame show the order of layers, which filters reached which object,
// and what clipping and nested scenes did.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "edit/EditService.h"
#include "edit/Layer.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "effect/input/BeforeObjectLoad.h"
#include "effect/input/FrameLoad.h"
#include "effect/item/EffectItemCheck.h"
#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/image/ImageBuffer.h"
#include "media/pass/FramePassConstants.h"
#include "media/pass/FramePasses.h"
#include "platform/egl_gl/GlBackendFactory.h"
#include "render/ObjectContext.h"
#include "render/RenderVideoWorker.h"
#include "system/Log.h"

namespace {

using Color = std::array<float, 4>;
using Effect::EffectMedia;
using Effect::EffectType;
using Render::ObjectContext;
using Render::RenderVideoWorker;

constexpr std::int32_t kSide = 8;
constexpr Color kRed{1, 0, 0, 1};
constexpr Color kGreen{0, 1, 0, 1};
constexpr Color kHalfBlue{0, 0, 0.5f, 0.5f};
constexpr Color kClear{0, 0, 0, 0};

std::unique_ptr<Media::ResourceBuffer> halfFloatImage(Media::GraphicsDevice& device, std::uint32_t width,
                                                      std::uint32_t height, const std::vector<float>& values) {
  const std::vector<_Float16> halves(values.begin(), values.end());
  std::vector<std::byte> bytes(halves.size() * sizeof(_Float16));
  std::memcpy(bytes.data(), halves.data(), bytes.size());
  return std::make_unique<Media::ResourceBuffer>(device, width, height, Media::Format::Rgba16Float, std::move(bytes));
}

// One colour (premultiplied) over the columns from `left` up to `right`.
class Solid final : public Effect::EffectInstance<Solid> {
 public:
  static const Effect::EffectInfo kInfo;
  Solid() : EffectInstance(kInfo) {}
  std::unique_ptr<Media::ResourceBuffer> inputVideo(ObjectContext& context) override {
    const auto width = static_cast<std::uint32_t>(context.scene->width);
    const auto height = static_cast<std::uint32_t>(context.scene->height);
    std::vector<float> values(std::size_t{width} * height * 4, 0.0f);
    for (std::uint32_t y = 0; y < height; ++y) {
      for (std::uint32_t x = left; x < std::min(right, width); ++x) {
        std::copy(colour.begin(), colour.end(), values.begin() + (std::size_t{y} * width + x) * 4);
      }
    }
    return halfFloatImage(context.worker->device(), width, height, values);
  }
  Color colour = kRed;
  std::uint32_t left = 0;
  std::uint32_t right = kSide;
};
const Effect::EffectInfo Solid::kInfo{L"test solid", EffectType::Input, EffectMedia::Video, EffectMedia::Video, L"", {}};

// Lays the image over the frame where it stands.
class Draw final : public Effect::EffectInstance<Draw> {
 public:
  static const Effect::EffectInfo kInfo;
  Draw() : EffectInstance(kInfo) {}
  void outputVideo(ObjectContext& context, Media::RenderBuffer& target, Media::ResourceBuffer& image) override {
    Media::PassOptions sourceOver;
    sourceOver.blendState = 0;
    context.worker->framePasses()->run(Media::FramePass::Copy, target, {&image}, sourceOver);
  }
  void getOutputView(ObjectContext&, Render::ObjectView&) override {}
};
const Effect::EffectInfo Draw::kInfo{L"test draw", EffectType::Output, EffectMedia::Video, EffectMedia::Video, L"", {}};

// Halves every channel: what reached an object shows in its alpha.
class Half final : public Effect::EffectInstance<Half> {
 public:
  static const Effect::EffectInfo kInfo;
  Half() : EffectInstance(kInfo) {}
  std::unique_ptr<Media::ResourceBuffer> filterVideo(ObjectContext& context,
                                                     std::unique_ptr<Media::ResourceBuffer> image) override {
    Media::GraphicsDevice& device = context.worker->device();
    auto halved = std::make_unique<Media::ResourceBuffer>(device, image->width(), image->height());
    Media::ConstantBufferCommon constants(device);
    constants.create(Media::AlphaConstants{0.5f});
    Media::PassOptions options;
    options.constants = &constants;
    context.worker->framePasses()->run(Media::FramePass::CopyAlpha, *halved, {image.get()}, options);
    return halved;
  }
};
const Effect::EffectInfo Half::kInfo{L"test half", EffectType::Filter, EffectMedia::Video, EffectMedia::Video, L"", {}};

// Another scene's frame, rendered ahead on the walker as a scene used as video is.
class SceneImage final : public Effect::EffectInstance<SceneImage> {
 public:
  static const Effect::EffectInfo kInfo;
  SceneImage() : EffectInstance(kInfo) {}
  void prepareVideo(ObjectContext& context) override {
    context.worker->renderSceneImage(scene, context.frame,
                                     [slot = slot](std::shared_ptr<Media::ImageBuffer> image) { *slot = std::move(image); });
  }
  std::unique_ptr<Media::ResourceBuffer> inputVideo(ObjectContext& context) override {
    const Media::ImageBuffer& image = **slot;
    std::vector<std::byte> bytes(image.width() * image.height() * 8);
    for (std::uint32_t y = 0; y < image.height(); ++y) {
      std::memcpy(bytes.data() + y * image.width() * 8, image.row(y), image.width() * 8);
    }
    return std::make_unique<Media::ResourceBuffer>(context.worker->device(), image.width(), image.height(),
                                                   Media::Format::Rgba16Float, std::move(bytes));
  }
  std::shared_ptr<Edit::Scene> scene;
  std::shared_ptr<std::shared_ptr<Media::ImageBuffer>> slot = std::make_shared<std::shared_ptr<Media::ImageBuffer>>();
};
const Effect::EffectInfo SceneImage::kInfo{L"test scene", EffectType::Input, EffectMedia::Video, EffectMedia::Video, L"", {}};

class SectionWalk : public ::testing::Test {
 protected:
  void SetUp() override {
    try {
      device_ = std::make_unique<Media::GraphicsDevice>(Platform::createGlBackend, Media::DeviceSettings{});
    } catch (const std::exception& failure) {
      GTEST_SKIP() << "EGL cannot start: " << failure.what();
    }
    device_->run([this] { passes_ = std::make_unique<Media::FramePasses>(*device_, kSide, kSide); });
    worker_ = std::make_unique<RenderVideoWorker>(*device_, edit_, Render::VideoWorkerSettings{1 << 20, {}, nullptr});
    worker_->setFramePasses(passes_.get());
    scene_ = edit_.currentScene();
    scene_->width = kSide;
    scene_->height = kSide;
  }
  void TearDown() override {
    if (worker_) worker_->stop();
    if (device_) device_->run([this] { passes_.reset(); });
  }

  template <class E>
  E& add(Edit::Object& object) {
    auto effect = std::make_shared<E>();
    object.effects.push_back(effect);
    return *effect;
  }
  // An object of one colour over columns left..right on `layer`, drawn by the test output.
  Edit::Object& solid(std::int32_t layer, Color colour, std::uint32_t left = 0, std::uint32_t right = kSide) {
    Edit::Object& object = *scene_->createEmptyObject(layer, 0, 9);
    Solid& input = add<Solid>(object);
    input.colour = colour;
    input.left = left;
    input.right = right;
    add<Draw>(object);
    return object;
  }
  Edit::Object& filterObject(std::int32_t layer) {
    Edit::Object& object = *scene_->createEmptyObject(layer, 0, 9);
    add<Half>(object);
    return object;
  }

  // The frame's pixels, premultiplied floats, rendered as a single frame.
  std::vector<float> render(std::int32_t frame = 0) {
    scene_->update();
    std::vector<float> pixels;
    worker_->requestRenderingFrame(RenderVideoWorker::Single, frame, [&](std::int32_t, Media::RenderBuffer& buffer, Anchor::AnchorList&) {
      std::vector<std::byte> bytes;
      device_->run([&] { bytes = buffer.readPixels(); });
      std::vector<_Float16> halves(bytes.size() / sizeof(_Float16));
      std::memcpy(halves.data(), bytes.data(), bytes.size());
      pixels.assign(halves.begin(), halves.end());
    });
    worker_->waitRendering();
    return pixels;
  }
  static Color at(const std::vector<float>& pixels, std::int32_t x, std::int32_t y) {
    const auto i = static_cast<std::size_t>((y * kSide + x) * 4);
    return {pixels.at(i), pixels.at(i + 1), pixels.at(i + 2), pixels.at(i + 3)};
  }

  std::unique_ptr<Media::GraphicsDevice> device_;
  std::unique_ptr<Media::FramePasses> passes_;
  Edit::EditService edit_;
  std::unique_ptr<RenderVideoWorker> worker_;
  std::shared_ptr<Edit::Scene> scene_;
};

TEST_F(SectionWalk, LayersLieInOrderAndFilterObjectsReachTheRunAboveThem) {
  solid(0, kRed);
  solid(1, kHalfBlue);
  EXPECT_EQ(at(render(), 3, 3), (Color{0.5f, 0, 0.5f, 1}));  // layer 1 over layer 0

  // A filter object two rows down, across an empty row, halves layer 1 only.
  filterObject(3);
  EXPECT_EQ(at(render(), 3, 3), (Color{0.75f, 0, 0.25f, 1}));

  // An ordinary object between them ends the run: the filter now halves that one.
  solid(2, Color{0, 0.5f, 0, 0.5f});
  EXPECT_EQ(at(render(), 3, 3), (Color{0.375f, 0.25f, 0.375f, 1}));
}

TEST_F(SectionWalk, HiddenRowsAndDisabledEffectsTakeObjectsOutButDoNotEndAFilterRun) {
  solid(0, kRed);
  Edit::Object& blue = solid(1, kHalfBlue);
  Edit::Object& filter = filterObject(2);
  constexpr Color kHalfRed{0.5f, 0, 0, 0.5f};
  // The blue object is gone, and the filter reaches across its row to the red one.
  scene_->addLayers(1).info->hide = true;
  EXPECT_EQ(at(render(), 0, 0), kHalfRed);
  scene_->addLayers(1).info->hide = false;
  blue.effects.front()->disable = true;
  EXPECT_EQ(at(render(), 0, 0), kHalfRed);

  // An object of filters counts while one of its effects is on.
  blue.effects.front()->disable = false;
  add<Half>(filter).disable = true;
  filter.effects.front()->disable = true;
  EXPECT_EQ(at(render(), 0, 0), (Color{0.5f, 0, 0.5f, 1}));
  filter.effects.back()->disable = false;
  EXPECT_EQ(at(render(), 0, 0), (Color{0.75f, 0, 0.25f, 1}));
}

TEST_F(SectionWalk, AClippingObjectCutsOnlyTheObjectAfterIt) {
  solid(0, kRed);
  solid(1, kGreen, 0, 4).clipping = true;  // the mask: the left half
  solid(2, kHalfBlue);                     // cut to the left half
  solid(3, Color{0, 0, 0, 0.5f});          // past the clip: everywhere
  const std::vector<float> pixels = render();
  EXPECT_EQ(at(pixels, 1, 1), (Color{0.25f, 0, 0.25f, 1}));  // blue over red, darkened
  EXPECT_EQ(at(pixels, 6, 1), (Color{0.5f, 0, 0, 1}));       // red alone, darkened
}

TEST_F(SectionWalk, AClippingObjectLastInItsSceneRestoresTheFrameOutsideItsMask) {
  solid(0, kRed);
  solid(1, kGreen, 0, 4).clipping = true;
  const std::vector<float> pixels = render();
  EXPECT_EQ(at(pixels, 1, 1), kRed);
  EXPECT_EQ(at(pixels, 6, 1), kRed);
}

TEST_F(SectionWalk, AScenePlaysInsideAnotherAndAsceneInsideItselfStaysClear) {
  std::shared_ptr<Edit::Scene> inner = edit_.getScene(1);
  inner->width = kSide;
  inner->height = kSide;
  Edit::Object& innerObject = *inner->createEmptyObject(0, 0, 9);
  add<Solid>(innerObject).colour = kGreen;
  add<Draw>(innerObject);
  inner->update();

  Edit::Object& shown = *scene_->createEmptyObject(0, 0, 9);
  add<SceneImage>(shown).scene = inner;
  add<Draw>(shown);
  EXPECT_EQ(at(render(), 2, 2), kGreen);

  // The scene shows itself: the inner render is refused and stays clear.
  static_cast<SceneImage&>(*shown.effects.front()).scene = scene_;
  EXPECT_EQ(at(render(), 2, 2), kClear);
}

TEST_F(SectionWalk, TheFrameAndTheObjectBeforeBecomeImages) {
  solid(0, kHalfBlue);
  Edit::Object& copy = *scene_->createEmptyObject(1, 0, 9);
  Effect::FrameLoad& frame = add<Effect::FrameLoad>(copy);
  add<Draw>(copy);
  // Without its alpha the copy is opaque and covers what it copied.
  EXPECT_EQ(at(render(), 2, 2), (Color{0, 0, 0.5f, 1}));
  frame.item<Effect::EffectItemCheck>(L"アルファチャンネルを維持").setValue(true);
  EXPECT_EQ(at(render(), 2, 2), (Color{0, 0, 0.75f, 0.75f}));
  frame.item<Effect::EffectItemCheck>(L"フレームバッファをクリア").setValue(true);
  EXPECT_EQ(at(render(), 2, 2), kHalfBlue);

  // The object before is drawn again once; a second in a row finds nothing.
  copy.effects.front() = std::make_shared<Effect::BeforeObjectLoad>();
  Edit::Object& again = *scene_->createEmptyObject(2, 0, 9);
  add<Effect::BeforeObjectLoad>(again);
  add<Draw>(again);
  EXPECT_EQ(at(render(), 2, 2), (Color{0, 0, 0.75f, 0.75f}));
}

}  // namespace
