// The device's logic over a recording back end: its start and the settings it reads,
// the GPU thread, buffer life cycles, the pipeline state memory and what a pass binds
// and clears.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <optional>
#include <stdexcept>
#include <thread>

#include "media/ComputeShader.h"
#include "media/ConstantBufferCommon.h"
#include "media/CpuAccessBuffer.h"
#include "media/DeviceFakeBackend.h"
#include "media/GraphicsDevice.h"
#include "media/GraphicsService.h"
#include "media/PixelShader.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/VertexList.h"
#include "media/pass/FramePasses.h"
#include "system/Exception.h"
#include "system/IniFile.h"

namespace {

using Media::Format;
using MediaTest::FakeBackend;

// What `work` threw as an E; a failure where it threw nothing.
template <class E>
std::optional<E> thrown(const std::function<void()>& work) {
  try {
    work();
  } catch (const E& e) {
    return e;
  }
  ADD_FAILURE() << "nothing thrown";
  return std::nullopt;
}

class DeviceLogic : public ::testing::Test {
 protected:
  DeviceLogic()
      : device_(
            [this] {
              auto backend = std::make_unique<FakeBackend>();
              fake_ = backend.get();
              return backend;
            },
            Media::DeviceSettings{Format::Rgba16Float, Format::A8Unorm, 64, {}}) {}

  // Runs on the GPU thread, as all work with the back end must.
  void gpu(const std::function<void()>& work) { device_.run(work); }

  std::size_t count(const std::string& call) const {
    return std::count(fake_->calls.begin(), fake_->calls.end(), call);
  }

  static Media::CompiledShader pixelShader(std::vector<Media::ShaderInputParameter> inputs) {
    Media::CompiledShader shader;
    shader.inputs = std::move(inputs);
    shader.textures = {{0, 0, 0}, {1, -1, 3}};
    return shader;
  }

  FakeBackend* fake_ = nullptr;
  Media::GraphicsDevice device_;
};

TEST_F(DeviceLogic, WorkRunsOnTheGpuThreadAndItsFailureComesBack) {
  bool onGpu = false;
  gpu([&] { onGpu = device_.isGpuThread(); });
  EXPECT_TRUE(onGpu);
  EXPECT_FALSE(device_.isGpuThread());
  EXPECT_THROW(gpu([] { throw std::runtime_error("lost"); }), std::runtime_error);
  gpu([] {});  // the thread survives a failure
}

TEST(DeviceStart, MissingOrderedViewsWarnTheUserOnceAndGoOn) {
  std::vector<std::string> warnings;
  Media::DeviceSettings settings;
  settings.warnUser = [&](const std::string& text, const std::string&) { warnings.push_back(text); };
  Media::GraphicsDevice device([] { return std::make_unique<FakeBackend>(); }, settings);
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0], "D3D ROVs not supported.\n\n一部の機能が正しく動作しない可能性があります");
}

TEST(DeviceStart, BackEndThatCannotStartFailsTheConstructor) {
  auto failing = []() -> std::unique_ptr<Media::GraphicsBackend> {
    throw System::HResultException("eglInitialize", "Media::GraphicsDevice::GraphicsDevice", 0x3001);
  };
  EXPECT_THROW(Media::GraphicsDevice(failing, {}), System::HResultException);
}

TEST(DeviceStart, SettingsComeFromTheSystemFile) {
  const auto read = [](const std::string& lines) {
    System::IniFile file;
    file.loadMemory("[Config]\r\n" + lines);
    return Media::GraphicsService::readSettings(file.section("Config"));
  };
  const Media::DeviceSettings settings = read("PixelFormat=28\r\nShadowBufferSize=1024\r\n");
  EXPECT_EQ(settings.pixelFormat, Media::Format::Rgba8Unorm);
  EXPECT_EQ(settings.maskFormat, Media::Format::A8Unorm);
  EXPECT_EQ(settings.shadowBufferSize, 1024u);

  for (const char* broken : {"PixelFormat=10\r\n", "ShadowBufferSize=large\r\n"}) {
    const auto failure = thrown<System::Exception>([&] { read(broken); });
    ASSERT_TRUE(failure) << broken;
    EXPECT_NE(failure->text().find("ini file parameter invalid format(int) or undefined."), std::string::npos);
  }
  EXPECT_THROW(read("PixelFormat=12\r\nShadowBufferSize=1024\r\n"), System::NoteException);
}

TEST_F(DeviceLogic, OnlyTheDrawableFormatsBecomeTargets) {
  gpu([&] {
    Media::ResourceBuffer image(device_, 4, 4, Format::Rgba8Unorm);
    // Format 28 is not drawable with pixel format 10.
    const auto view = thrown<System::HResultException>([&] { image.renderTargetView(); });
    ASSERT_TRUE(view);
    EXPECT_NE(view->text().find("glCheckNamedFramebufferStatus() failed"), std::string::npos);
    EXPECT_NE(view->text().find("Media::ResourceBuffer::createRenderTargetView"), std::string::npos);
    for (Format format : {Format::Rgba16Float, Format::A8Unorm, Format::R32Float, Format::Rg32Float}) {
      Media::ResourceBuffer target(device_, 4, 4, format);
      EXPECT_NE(target.renderTargetView(), 0u);
    }
    Media::RenderBuffer frame(device_, 4, 4);
    std::vector<std::uint8_t> pixels(64);
    // A frame in format 10 has no 32-bit copy.
    const auto copy = thrown<System::NoteException>([&] { frame.copyToRGBA(pixels.data()); });
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->message(), "invalid pixel format.");
    EXPECT_NE(copy->text().find("Media::RenderBuffer::copyToRGBA"), std::string::npos);
  });
}

TEST_F(DeviceLogic, BufferSizesAndTexturesFollowTheRules) {
  gpu([&] {
    Media::ResourceBuffer wide(device_, 20000, 100), edge(device_, 16384, 0);
    EXPECT_EQ(wide.width(), 16384u);
    EXPECT_EQ(wide.height(), 100u);
    EXPECT_EQ(fake_->liveTextures.at(wide.texture()), 16384u);
    EXPECT_EQ(edge.width(), 16384u);
    EXPECT_EQ(edge.height(), 0u);

    Media::ResourceBuffer empty(device_, 0, 0);
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(empty.texture(), 0u);
  });
  EXPECT_TRUE(fake_->liveTextures.empty());
}

TEST_F(DeviceLogic, CopyFromRgbaOnlyFillsAnEmptyBufferWith32BitPixels) {
  const std::vector<std::uint8_t> pixels(2 * 3 * 4, 7);
  gpu([&] {
    Media::ResourceBuffer buffer(device_);
    buffer.copyFromRGBA(Format::Bgra8Unorm, pixels.data(), 2, 3);
    EXPECT_EQ(buffer.width(), 2u);
    EXPECT_EQ(buffer.format(), Format::Bgra8Unorm);
    const Media::GpuId texture = buffer.texture();
    const auto second = thrown<System::NoteException>(
        [&] { buffer.copyFromRGBA(Format::Rgba8Unorm, pixels.data(), 1, 1); });
    ASSERT_TRUE(second);
    EXPECT_EQ(second->message(), "already allocated resource buffer.");
    EXPECT_NE(second->text().find("Media::ResourceBuffer::copyFromRGBA"), std::string::npos);
    EXPECT_EQ(buffer.texture(), texture);
    EXPECT_EQ(buffer.width(), 2u);
    EXPECT_EQ(buffer.format(), Format::Bgra8Unorm);

    Media::ResourceBuffer other(device_);
    const auto half = thrown<System::NoteException>(
        [&] { other.copyFromRGBA(Format::Rgba16Float, pixels.data(), 1, 1); });
    ASSERT_TRUE(half);  // only 32-bit formats may be copied
    EXPECT_EQ(half->message(), "invalid pixel format.");
    EXPECT_TRUE(other.empty());
  });
}

TEST_F(DeviceLogic, BufferMadeOffTheGpuThreadCreatesItsTextureAtFirstUse) {
  std::unique_ptr<Media::ResourceBuffer> buffer;
  std::thread([&] {
    buffer = std::make_unique<Media::ResourceBuffer>(device_, 2, 2, Format::Rgba8Unorm,
                                                     std::vector<std::byte>(16, std::byte{1}));
  }).join();
  gpu([&] { EXPECT_TRUE(fake_->liveTextures.empty()); });
  gpu([&] { EXPECT_NE(buffer->texture(), 0u); });
  EXPECT_TRUE(fake_->lastUploadHadPixels);
  buffer.reset();  // released from this thread: posted to the GPU thread
  gpu([&] { EXPECT_TRUE(fake_->liveTextures.empty()); });
}

TEST_F(DeviceLogic, FrameKeepsItsViewsAtTheSameSizeAndMakesAuxiliaryBuffersOnce) {
  gpu([&] {
    Media::RenderBuffer frame(device_, 8, 6);
    const Media::GpuId texture = frame.texture();
    const Media::GpuId target = frame.renderTargetView();
    frame.createTexture2D(8, 6);
    EXPECT_EQ(frame.texture(), texture);
    EXPECT_EQ(frame.renderTargetView(), target);
    frame.createTexture2D(9, 6);
    EXPECT_NE(frame.texture(), texture);
    EXPECT_EQ(fake_->liveTextures.count(texture), 0u);
    EXPECT_EQ(frame.width(), 9u);

    Media::ResourceBuffer& depth = frame.depthBuffer();
    EXPECT_EQ(&frame.depthBuffer(), &depth);
    EXPECT_EQ(depth.format(), Format::R32Float);
    EXPECT_EQ(frame.normalBuffer().format(), Format::Rgba16Float);
    frame.shadowMaps().resize(2);
    EXPECT_EQ(frame.shadowMap(1).width(), 64u);
    EXPECT_EQ(frame.shadowMap(1).format(), Format::Rg32Float);
    EXPECT_THROW(frame.shadowMap(2), std::out_of_range);
  });
}

TEST_F(DeviceLogic, LikePassesSetTheirStatesOnceAndOtherSignaturesDoNotDraw) {
  gpu([&] {
    Media::PixelShader shader(device_), other(device_);
    shader.load(pixelShader({{"SV_Position", 0, 15, Media::ComponentType::Float32}}));
    other.load(pixelShader({{"COLOR", 0, 15, Media::ComponentType::Float32}}));
    Media::ResourceBuffer source(device_, 4, 4), target(device_, 4, 4);
    fake_->calls.clear();
    shader.draw(target, {&source});
    shader.draw(target, {&source});
    EXPECT_EQ(count("rasterizer"), 1u);
    EXPECT_EQ(count("blend"), 1u);
    EXPECT_EQ(fake_->lastBlendEnable, 0u);  // no state given: no blending
    EXPECT_EQ(count("shader"), 2u);         // vertex and pixel shader, once each
    EXPECT_EQ(count("draw"), 2u);
    EXPECT_TRUE(fake_->textureUnits.empty());  // sources and target are free again
    EXPECT_EQ(fake_->boundTarget, 0u);

    // A factor always sets the state again; a new state is set once.
    shader.draw(target, {&source}, {nullptr, 4, Media::Color{0.5f, 0.5f, 0.5f, 0.5f}});
    shader.draw(target, {&source}, {nullptr, 0, std::nullopt});
    shader.draw(target, {&source}, {nullptr, 0, std::nullopt});
    EXPECT_EQ(count("blend"), 3u);
    EXPECT_EQ(fake_->lastBlendEnable, 1u);

    EXPECT_EQ(other.drawPath(), Media::DrawPath::None);
    EXPECT_THROW(other.draw(target, {&source}), std::bad_function_call);
    EXPECT_TRUE(fake_->textureUnits.empty());  // cleared on the way out
    EXPECT_EQ(fake_->boundTarget, 0u);
  });
}

TEST_F(DeviceLogic, SingleQuadReusesTheSharedBufferAndTwoQuadsMakeTwelveVertices) {
  gpu([&] {
    Media::VertexListQuadPosUv one;
    for (int i = 0; i < 4; ++i) one.push({float(i), 0, 0, 0, 0, 0, 0});
    one.draw(device_);
    const std::size_t created = fake_->buffersCreated;
    one.draw(device_);
    one.drawWithNormal(device_);
    EXPECT_EQ(fake_->buffersCreated, created);
    EXPECT_EQ(count("updateBuffer"), 3u);

    Media::VertexListQuadPosUv two;
    two.append(one);
    two.append(one);
    const std::size_t live = fake_->buffersLive;
    two.draw(device_);
    EXPECT_EQ(fake_->buffersCreated, created + 1);
    EXPECT_EQ(fake_->buffersLive, live);  // the temporary buffer is released
    EXPECT_EQ(fake_->drawCounts.back(), 12u);
  });
}

// An image's format follows the buffer bound at its register: one program per format met,
// made once and kept.
TEST_F(DeviceLogic, ComputeProgramFollowsTheFormatOfTheBoundImage) {
  Media::CompiledShader shader;
  shader.stage = Media::ShaderStage::Compute;
  shader.glsl = "layout(binding = 0, SORVEL_IMAGE_FORMAT_0) uniform image2D target;";
  shader.images = {{0, 0}};
  gpu([&] {
    Media::ComputeShader compute(device_);
    compute.load(shader);
    Media::ResourceBuffer colour(device_, 3, 3, Format::Rgba16Float);
    Media::ResourceBuffer mask(device_, 3, 3, Format::A8Unorm);
    for (Media::ResourceBuffer* target : {&colour, &mask, &colour}) {
      device_.setComputeTarget(0, *target);
      compute.dispatch(1, 1, 1);
    }
  });
  ASSERT_EQ(fake_->shaderSources.size(), 2u);
  EXPECT_NE(fake_->shaderSources[0].find("rgba16f"), std::string::npos);
  EXPECT_NE(fake_->shaderSources[1].find("rgba8"), std::string::npos);
}

}  // namespace

namespace {

// What a thread other than the GPU thread may do: make frames, shaders and constants,
// whose GPU work is handed over, but never reach the back end itself.
TEST_F(DeviceLogic, OtherThreadsHandTheirGpuWorkOverAndCannotReachTheBackEnd) {
  std::unique_ptr<Media::RenderBuffer> frame;
  Media::PixelShader shader(device_);
  Media::ConstantBufferCommon constants(device_);
  std::optional<System::NoteException> direct;
  std::thread([&] {
    frame = std::make_unique<Media::RenderBuffer>(device_, 4, 3);
    shader.load(pixelShader({{"SV_Position", 0, 15, Media::ComponentType::Float32}}));
    constants.create(Media::Color{1, 2, 3, 4});
    direct = thrown<System::NoteException>([&] { device_.backend(); });
  }).join();
  EXPECT_NE(frame->texture(), 0u);
  EXPECT_NE(constants.buffer(), 0u);
  EXPECT_EQ(fake_->shaderSources.size(), 1u);
  ASSERT_TRUE(direct);
  EXPECT_NE(direct->text().find("Media::GraphicsDevice::backend"), std::string::npos);
  EXPECT_THROW(device_.finish(), System::NoteException);
  frame.reset();
}

// A frame in the pixel format is a compute target like any image; the images a
// dispatch used are unbound after it.
TEST_F(DeviceLogic, FrameIsAComputeTargetAndImagesAreUnboundAfterTheDispatch) {
  Media::CompiledShader shader;
  shader.stage = Media::ShaderStage::Compute;
  shader.glsl = "layout(binding = 2, SORVEL_IMAGE_FORMAT_2) uniform image2D framebuffer;";
  shader.images = {{0, 2}};
  gpu([&] {
    Media::ComputeShader compute(device_);
    compute.load(shader);
    Media::RenderBuffer frame(device_, 5, 5);
    device_.setComputeTarget(0, frame);
    compute.dispatch(1, 1, 1);
    EXPECT_EQ(fake_->imagesAtDispatch.at(2), frame.texture());
    EXPECT_TRUE(fake_->imageUnits.empty());

    Media::RenderBuffer mask(device_, 5, 5, Format::A8Unorm);
    EXPECT_THROW(device_.setComputeTarget(0, mask), System::HResultException);
    device_.setRenderTarget(mask);
    EXPECT_EQ(fake_->boundTargetFormat, Format::A8Unorm);
  });
}

// Constants shorter than the shader's block are bound as a copy padded with zeros,
// made once while the contents stay.
TEST_F(DeviceLogic, ShortConstantBufferIsBoundPaddedWithZeros) {
  Media::CompiledShader compiled = pixelShader({{"SV_Position", 0, 15, Media::ComponentType::Float32}});
  compiled.constants = {{0, 3, 48}};
  gpu([&] {
    Media::PixelShader shader(device_);
    shader.load(compiled);
    Media::ResourceBuffer target(device_, 2, 2);
    Media::ConstantBufferCommon constants(device_);
    constants.create(Media::Color{1, 2, 3, 4});
    shader.draw(target, {}, {&constants, std::nullopt, std::nullopt});
    const Media::GpuId padded = fake_->constantBuffers.at(3);
    ASSERT_NE(padded, constants.buffer());
    const std::vector<std::byte>& bytes = fake_->bufferContents.at(padded);
    ASSERT_EQ(bytes.size(), 48u);
    float first[4];
    std::memcpy(first, bytes.data(), 16);
    EXPECT_EQ(first[3], 4.0f);
    EXPECT_TRUE(std::all_of(bytes.begin() + 16, bytes.end(), [](std::byte b) { return b == std::byte{0}; }));
    shader.draw(target, {}, {&constants, std::nullopt, std::nullopt});
    EXPECT_EQ(fake_->constantBuffers.at(3), padded);
    constants.update(Media::Color{5, 6, 7, 8}.data());
    shader.draw(target, {}, {&constants, std::nullopt, std::nullopt});
    EXPECT_NE(fake_->constantBuffers.at(3), padded);
  });
}

// A YUY2 row ends in a whole block of two pixels; an upload with fewer bytes than its
// rows need is refused rather than read past.
TEST_F(DeviceLogic, OddWidthYuy2RowsEndInAWholeBlock) {
  EXPECT_EQ(Media::rowBytes(Format::Yuy2, 3), 8u);
  EXPECT_EQ(Media::rowBytes(Format::Yuy2, 4), 8u);
  EXPECT_EQ(Media::rowBytes(Format::Yuy2Packed, 1), 4u);
  EXPECT_THROW(Media::ResourceBuffer(device_, 3, 2, Format::Yuy2, std::vector<std::byte>(12)), System::NoteException);
  Media::ResourceBuffer padded(device_, 3, 2, Format::Yuy2, std::vector<std::byte>(16));
  EXPECT_EQ(padded.format(), Format::Yuy2Packed);
  EXPECT_EQ(padded.width(), 3u);
  // Rows at a pitch: at least a row long, and in whole blocks, since the back end steps
  // from row to row in texels.
  const std::vector<std::byte> rows(64);
  EXPECT_NO_THROW(Media::ResourceBuffer(device_, 3, 2, Format::Yuy2, rows.data(), 32));
  EXPECT_THROW(Media::ResourceBuffer(device_, 3, 2, Format::Yuy2, rows.data(), 6), System::NoteException);
  EXPECT_THROW(Media::ResourceBuffer(device_, 3, 2, Format::Bgra8Unorm, rows.data(), 14), System::NoteException);
}

// Auxiliary buffers follow the frame's size; lights and their shadow map slots go
// together.
TEST_F(DeviceLogic, AuxiliaryBuffersAreRemadeAfterAResizeAndLightsKeepTheirShadowSlots) {
  gpu([&] {
    Media::RenderBuffer frame(device_, 8, 6);
    const Media::GpuId depth = frame.depthBuffer().texture();
    EXPECT_EQ(frame.depthBuffer().texture(), depth);
    frame.createTexture2D(10, 4);
    EXPECT_EQ(frame.depthBuffer().width(), 10u);
    EXPECT_EQ(frame.depthBuffer().height(), 4u);
    EXPECT_EQ(fake_->liveTextures.count(depth), 0u);

    Media::LightRecord light;
    light.type = Media::LightType::ParallelWithShadow;
    frame.addLight(light);
    frame.addLight(Media::LightRecord{});
    ASSERT_EQ(frame.lights().size(), 2u);
    EXPECT_EQ(frame.lights()[0].type, Media::LightType::ParallelWithShadow);
    ASSERT_EQ(frame.shadowMaps().size(), 2u);
    EXPECT_EQ(frame.shadowMaps()[1], nullptr);
    EXPECT_EQ(frame.shadowMap(1).width(), 64u);
    frame.clearLights();
    EXPECT_TRUE(frame.lights().empty());
    EXPECT_TRUE(frame.shadowMaps().empty());
  });
}

// Points are a list of their own topology; the strip form of a single quad sends four
// corners in the order p0, p1, p3, p2 through the shared buffer.
TEST_F(DeviceLogic, PointsAndTheStripFormOfASingleQuad) {
  gpu([&] {
    const Media::XYZ_COL points[3] = {};
    device_.drawPoints(points, sizeof(Media::XYZ_COL), 3);
    EXPECT_EQ(fake_->lastTopology, Media::Topology::PointList);
    EXPECT_EQ(fake_->drawCounts.back(), 3u);

    Media::VertexListQuadPosUv quad;
    for (int i = 0; i < 4; ++i) quad.push({float(i), 0, 0, 0, 0, 0, 0});
    device_.singleQuadBuffer();
    const std::size_t created = fake_->buffersCreated;
    quad.drawStrip(device_);
    EXPECT_EQ(fake_->buffersCreated, created);
    EXPECT_EQ(fake_->lastTopology, Media::Topology::TriangleStrip);
    EXPECT_EQ(fake_->drawCounts.back(), 4u);
    const std::vector<std::byte>& sent = fake_->bufferContents.at(device_.singleQuadBuffer());
    float x[4];
    for (int i = 0; i < 4; ++i) std::memcpy(&x[i], sent.data() + i * sizeof(Media::XYZ_UV), sizeof(float));
    EXPECT_EQ(std::vector<float>(x, x + 4), (std::vector<float>{0, 1, 3, 2}));
  });
}

// Each kind of pass and the composition keep their own choice of path: measured at
// first use, or fixed beforehand.
TEST_F(DeviceLogic, EachKindOfPassKeepsItsOwnPath) {
  gpu([&] {
    Media::FramePasses passes(device_, 16, 16);
    Media::RenderBuffer frame(device_, 8, 8);
    Media::ResourceBuffer layer(device_, 8, 8);
    passes.choosePath(Media::FramePass::Copy, Media::FramePassPath::Compute);
    fake_->calls.clear();
    passes.run(Media::FramePass::Copy, frame, {&layer});
    EXPECT_EQ(count("dispatch"), 1u);
    EXPECT_EQ(count("draw"), 0u);

    EXPECT_FALSE(passes.chosenPath(Media::FramePass::Saturate));
    passes.run(Media::FramePass::Saturate, frame, {&layer});
    EXPECT_TRUE(passes.chosenPath(Media::FramePass::Saturate));
    EXPECT_FALSE(passes.chosenPath(Media::FramePass::ClampToAlpha));
    EXPECT_FALSE(passes.chosenCompositionPath());

    passes.chooseCompositionPath(Media::FramePassPath::Draw);
    Media::ResourceBuffer* layers[] = {&layer, &layer, &layer};
    fake_->calls.clear();
    passes.composeSourceOver(frame, layers);
    EXPECT_EQ(count("draw"), 3u);
    EXPECT_EQ(count("dispatch"), 0u);
    EXPECT_EQ(passes.chosenPath(Media::FramePass::Copy), Media::FramePassPath::Compute);
  });
}

// A read-back is queued on the GPU thread and waited for, and copied out, on the
// caller's; a mask comes back as its alpha bytes.
TEST_F(DeviceLogic, ReadBackIsQueuedThenWaitedForByItsReader) {
  std::unique_ptr<Media::CpuAccessBuffer> pending;
  gpu([&] {
    Media::RenderBuffer mask(device_, 3, 2, Format::A8Unorm);
    pending = mask.startReadBack();
  });
  EXPECT_EQ(count("beginRead"), 1u);
  EXPECT_EQ(count("waitRead"), 0u);
  const std::vector<std::byte> bytes = pending->takeData();
  EXPECT_EQ(count("waitRead"), 1u);
  EXPECT_EQ(bytes, std::vector<std::byte>(6, std::byte{0x40}));
  pending.reset();
  gpu([&] { EXPECT_TRUE(fake_->reads.empty()); });
}

}  // namespace
