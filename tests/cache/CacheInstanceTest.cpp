// The cache service over a reader and scene renderers made here and the graphics device's
// recording back end: one read for a frame however often it is asked for, scenes rendered
// once a frame whatever the limit, what a change of scene drops, which blocks of sound a
// range asks ahead for, and GPU images made on the GPU thread alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "cache/AudioReadPosition.h"
#include "cache/CacheInstance.h"
#include "edit/EditService.h"
#include "edit/Scene.h"
#include "media/ColorTableText.h"
#include "media/DeviceFakeBackend.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBlockBuffer.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ResourceConvert.h"
#include "media/image/YUVformat.h"
#include "media/pass/FramePasses.h"
#include "plugin/InputFile.h"
#include "plugin/InputPlugin.h"
#include "plugin/InputService.h"
#include "system/Exception.h"
#include "system/IniFile.h"
#include "worker/WorkerThread.h"

namespace {

using Cache::CacheInstance;
using Cache::ImageCacheKey;
using Media::Format;

const std::wstring kClip = L"/media/clip.fake";    // 60 frames at 30 a second
const std::wstring kSound = L"/media/sound.fake";  // 2.5 seconds at 48 kHz
const std::wstring kBroken = L"/media/broken.fake";
const std::wstring kScene = L"*3";

struct FakeMedia {
  std::int32_t frames = 0;   // at 30 a second; each 256 x 256 in the frame's own format
  std::int64_t samples = 0;  // at 48 kHz
  bool throws = false;
};

std::shared_ptr<Media::AudioBlockBuffer> silence() {
  const std::vector<std::byte> bytes(48000 * 2 * sizeof(float));
  return std::make_shared<Media::AudioBlockBuffer>(
      Media::AudioSampleData{bytes, Media::SampleFormat::Float, 48000, 32, 2});
}

// Opens the files its test lists and counts every read, as "name#frame" and "name@block".
class FakeReader : public Plugin::InputPlugin {
 public:
  FakeReader() : InputPlugin(L"Fake", {L"FakeFile (*.fake)", L"*.fake"}, L"", Video | Audio) {}
  std::shared_ptr<Plugin::InputFile> open(const std::wstring& name, std::uint32_t) override {
    return files.contains(name) ? std::make_shared<File>(*this, name, files.at(name)) : nullptr;
  }
  int reads(const std::wstring& read) {
    std::lock_guard lock(mutex_);
    return log_.contains(read) ? log_.at(read) : 0;
  }
  std::map<std::wstring, FakeMedia> files;

 private:
  struct File : Plugin::InputFile {
    File(FakeReader& reader, std::wstring name, const FakeMedia& media)
        : reader(reader), name(std::move(name)), media(media) {
      flags = (media.frames ? Video : 0u) | (media.samples ? Audio : 0u);
      frameCount = media.frames;
      rate = 30;
      scale = 1;
      sampleCount = media.samples;
      sampleRate = 48000;
    }
    std::shared_ptr<Media::ImageBuffer> readVideo(std::int32_t frame) override {
      reader.logRead(name + L"#" + std::to_wstring(frame));
      if (media.throws) throw std::runtime_error("damaged frame");
      return std::make_shared<Media::ImageBuffer>(Format::Rgba16Float, 256, 256);
    }
    std::shared_ptr<Media::AudioBlockBuffer> readAudio(std::int32_t block) override {
      reader.logRead(name + L"@" + std::to_wstring(block));
      return silence();
    }
    FakeReader& reader;
    std::wstring name;
    FakeMedia media;
  };
  void logRead(const std::wstring& read) {
    std::lock_guard lock(mutex_);
    ++log_[read];
  }
  std::mutex mutex_;
  std::map<std::wstring, int> log_;
};

// A graphics device over the recording back end, with a conversion of CPU images.
struct FakeGpu {
  FakeGpu() {
    colorIni.loadMemory(MediaTest::kColorTableText);
    colors = std::make_unique<Media::YUVformat>(colorIni);
    device.run([&] { passes = std::make_unique<Media::FramePasses>(device, 16, 16); });
    convert = std::make_unique<Media::ResourceConvert>(device, *passes, *colors, Media::ConvertParameters{});
  }
  std::size_t texturesMade() {
    std::size_t made = 0;
    device.run([&] { made = std::count(fake->calls.begin(), fake->calls.end(), "createTexture"); });
    return made;
  }

  MediaTest::FakeBackend* fake = nullptr;  // set by the device's factory; before the device
  Media::GraphicsDevice device{[this] {
                                 auto backend = std::make_unique<MediaTest::FakeBackend>();
                                 fake = backend.get();
                                 return backend;
                               },
                               Media::DeviceSettings{Format::Rgba16Float, Format::A8Unorm, 64, {}}};
  System::IniFile colorIni;
  std::unique_ptr<Media::YUVformat> colors;
  std::unique_ptr<Media::FramePasses> passes;
  std::unique_ptr<Media::ResourceConvert> convert;
};

class CacheInstanceTest : public ::testing::Test {
 protected:
  CacheInstanceTest() {
    reader_->files = {{kClip, {60}}, {kSound, {0, 120000}}, {kBroken, {60, 0, true}}};
    for (const wchar_t* still : {L"/media/a.fake", L"/media/b.fake", L"/media/c.fake", L"/media/d.fake"}) {
      reader_->files[still] = {1};  // 512 KiB on the GPU
    }
    input_.registerPlugin(reader_);
    input_.updateExtTypeList();
    const std::shared_ptr<Edit::Scene> scene = edit_.getScene(3);
    scene->videoRate = 30;
    scene->videoScale = 1;
    scene->audioRate = 48000;
  }

  void make(std::int32_t imageMegabytes, std::int32_t vramMegabytes = 384, Media::ResourceConvert* convert = nullptr) {
    cache_.reset();
    ini_.value("Cache", "ImageCacheSize").setInt(imageMegabytes);
    ini_.value("Cache", "VramCacheSize").setInt(vramMegabytes);
    cache_ = std::make_unique<CacheInstance>(
        CacheInstance::Services{&ini_, &input_, &edit_, &edit_.events(), nullptr, convert});
  }

  // Renders scene images and blocks and delivers them later from a thread of its own, as
  // the render and audio workers do.
  void installRenderers() {
    cache_->setSceneImageRenderer([this](const auto&, std::int32_t, auto deliver) {
      ++renders_;
      objectThread_.post(0, [deliver] { deliver(std::make_shared<Media::ImageBuffer>(Format::Bgra8Unorm, 4, 4)); });
    });
    cache_->setSceneAudioRenderer([this](const auto&, std::int32_t block, auto deliver) {
      renderedBlocks_.push_back(block);
      objectThread_.post(0, [deliver] { deliver(silence()); });
    });
  }

  int reads(const std::wstring& read) { return reader_->reads(read); }

  System::IniFile ini_;
  std::shared_ptr<FakeReader> reader_ = std::make_shared<FakeReader>();
  Plugin::InputService input_{&ini_};
  Edit::EditService edit_;
  std::unique_ptr<FakeGpu> gpu_;
  std::atomic<int> renders_{0};
  std::vector<std::int32_t> renderedBlocks_;
  std::unique_ptr<CacheInstance> cache_;
  // Last, so it stops first: deliveries it still holds let their askers go while the
  // service is there.
  Worker::WorkerThread objectThread_{"ObjectThread"};
};

TEST_F(CacheInstanceTest, ObjectsShowingOneFrameCauseOneRead) {
  make(768);
  std::shared_ptr<Media::ImageBuffer> first, second;
  // 0.5 and 0.51 seconds both show frame 15.
  std::thread a([&] { first = cache_->getVideoImage(kClip, 0, 0.5); });
  std::thread b([&] { second = cache_->getVideoImage(kClip, 0, 0.51); });
  a.join();
  b.join();
  ASSERT_TRUE(first);
  EXPECT_EQ(first, second);
  EXPECT_EQ(reads(kClip + L"#15"), 1);

  cache_->preloadVideoImage(kClip, 0, 1.0);
  EXPECT_TRUE(cache_->getVideoImage(kClip, 0, 1.0));
  EXPECT_EQ(reads(kClip + L"#30"), 1);
}

TEST_F(CacheInstanceTest, AFilePlayedForwardIsReadAheadAndAJumpIsNot) {
  make(768);
  // Frames 10 and 12: played at double pace, so 14, 16 and 18 come next.
  cache_->preloadVideoImage(kClip, 0, 10 / 30.0);
  cache_->preloadVideoImage(kClip, 0, 12 / 30.0);
  cache_->imageCache().wait();
  for (const wchar_t* frame : {L"#14", L"#16", L"#18"}) EXPECT_EQ(reads(kClip + frame), 1) << frame;
  EXPECT_EQ(reads(kClip + L"#13"), 0);
  EXPECT_EQ(reads(kClip + L"#20"), 0);

  // A jump is a new start, and reading ahead stops at the end of the file.
  cache_->preloadVideoImage(kClip, 0, 40 / 30.0);
  cache_->preloadVideoImage(kClip, 0, 58 / 30.0);
  cache_->preloadVideoImage(kClip, 0, 59 / 30.0);
  cache_->imageCache().wait();
  EXPECT_EQ(reads(kClip + L"#41"), 0);
  EXPECT_EQ(reads(kClip + L"#60"), 0);
}

TEST_F(CacheInstanceTest, WithoutAnImageCacheImagesStillArriveAndFailuresGiveNothing) {
  make(0);
  EXPECT_TRUE(cache_->getVideoImage(kClip, 0, 0.0));
  EXPECT_TRUE(cache_->getImageFile(L"/media/a.fake"));
  EXPECT_EQ(cache_->imageCache().count(), 0u);

  EXPECT_FALSE(cache_->getVideoImage(L"/media/missing.fake", 0, 0.0));
  EXPECT_FALSE(cache_->getVideoImage(kBroken, 0, 0.0));
  EXPECT_FALSE(cache_->getAudioBlock(L"/media/missing.fake", 0, 0));
  EXPECT_FALSE(cache_->getVideoImage(L"*99", 0, 0.0));  // no such scene
  EXPECT_FALSE(cache_->getResourceImage(L"/media/a.fake"));  // no graphics device
  try {
    cache_->getVideoImage(kClip, 51, 0.0);
    ADD_FAILURE() << "track 51 was taken";
  } catch (const System::NoteException& e) {
    EXPECT_EQ(e.message(), "invalid track index");
    EXPECT_NE(e.text().find("Plugin::InputService::MakeMultiTrackFileName"), std::string::npos);
  }
}

TEST_F(CacheInstanceTest, SceneAskedForTwiceInAFrameRendersOnceWhateverTheLimit) {
  for (const std::int32_t limit : {768, 0}) {
    SCOPED_TRACE(limit);
    make(limit);
    EXPECT_FALSE(cache_->getVideoImage(kScene, 0, 1.0));  // no renderer, no image, no promise left
    installRenderers();
    renders_ = 0;
    cache_->beginFrame();
    cache_->preloadVideoImage(kScene, 0, 1.0);
    cache_->preloadVideoImage(kScene, 0, 1.0);
    const auto image = cache_->getVideoImage(kScene, 0, 1.0);  // waits for the delivery
    ASSERT_TRUE(image);
    cache_->preloadVideoImage(kScene, 0, 1.0);
    EXPECT_EQ(cache_->getVideoImage(kScene, 0, 1.0), image);
    EXPECT_EQ(renders_, 1);

    cache_->beginFrame();
    cache_->preloadVideoImage(kScene, 0, 1.0);
    EXPECT_TRUE(cache_->getVideoImage(kScene, 0, 1.0));
    EXPECT_EQ(renders_, limit == 0 ? 2 : 1);

    // A render that delivers nothing, or whose deliver is dropped, lets the asker go.
    cache_->setSceneImageRenderer([this](const auto&, std::int32_t, auto deliver) {
      objectThread_.post(0, [deliver] { deliver(nullptr); });
    });
    cache_->preloadVideoImage(kScene, 0, 2.0);
    EXPECT_FALSE(cache_->getVideoImage(kScene, 0, 2.0));
    cache_->setSceneImageRenderer([this](const auto&, std::int32_t, auto) { ++renders_; });
    cache_->preloadVideoImage(kScene, 0, 3.0);
    cache_->preloadVideoImage(kScene, 0, 3.0);
    EXPECT_FALSE(cache_->getVideoImage(kScene, 0, 3.0));
    EXPECT_EQ(renders_, limit == 0 ? 4 : 3);
  }
}

TEST_F(CacheInstanceTest, ChangeOfSceneDropsWhatScenesMadeAndKeepsFiles) {
  make(768);
  installRenderers();
  cache_->beginFrame();
  ASSERT_TRUE(cache_->getVideoImage(kClip, 0, 0.0));
  ASSERT_TRUE(cache_->getAudioBlock(kSound, 0, 0));
  cache_->preloadVideoImage(kScene, 0, 0.0);
  cache_->preloadAudioRange(kScene, 0, 0, 48000, 1024, 0.0, 1.0);
  ASSERT_TRUE(cache_->getVideoImage(kScene, 0, 0.0));
  ASSERT_TRUE(cache_->getAudioBlock(kScene, 0, 0));

  edit_.events().sceneChanged.fire(3);
  EXPECT_TRUE(cache_->imageCache().find(ImageCacheKey{kClip, 0}));
  EXPECT_TRUE(cache_->audioCache().find(Cache::AudioCacheKey{kSound, 0}));
  EXPECT_EQ(cache_->imageCache().count(), 1u);
  EXPECT_EQ(cache_->audioCache().count(), 1u);
  EXPECT_FALSE(cache_->getVideoImage(kScene, 0, 0.0));
  EXPECT_FALSE(cache_->getAudioBlock(kScene, 0, 0));
}

TEST(AudioReadPosition, BlocksTouchedFollowRateSpeedAndStart) {
  using Span = std::pair<std::int64_t, std::int64_t>;
  const auto blocks = [](std::int64_t position, std::int32_t count, double start, double speed,
                         std::int64_t rate = 48000) {
    const Cache::AudioBlockSpan span = Cache::audioBlocksTouched(rate, position, 48000, count, start, speed);
    return span.empty() ? Span(-1, -1) : Span(span.first, span.last);
  };
  EXPECT_EQ(blocks(0, 48000, 0.0, 1.0), Span(0, 0));
  EXPECT_EQ(blocks(47000, 1024, 0.0, 1.0), Span(0, 1));
  // Half speed reads between two source samples: the last output needs the one after.
  EXPECT_EQ(blocks(0, 95998, 0.0, 0.5), Span(0, 0));
  EXPECT_EQ(blocks(0, 95999, 0.0, 0.5), Span(0, 1));
  // Double speed averages two source samples an output.
  EXPECT_EQ(blocks(0, 24000, 0.0, 2.0), Span(0, 0));
  EXPECT_EQ(blocks(0, 24001, 0.0, 2.0), Span(0, 1));
  EXPECT_EQ(blocks(24000, 24000, 0.0, -2.0), blocks(24000, 24000, 0.0, 2.0));
  // A start 2.5 seconds into the source, and one before its beginning.
  EXPECT_EQ(blocks(0, 48000, 2.5, 1.0), Span(2, 3));
  EXPECT_EQ(blocks(24000, 100, -1.0, 1.0), Span(0, 0));
  // A 44.1 kHz source read at 48 kHz from the timeline's second 1.
  EXPECT_EQ(blocks(48000, 4800, 0.0, 1.0, 44100), Span(1, 1));
  EXPECT_EQ(blocks(0, 0, 0.0, 1.0), Span(-1, -1));
  EXPECT_EQ(blocks(0, 100, 0.0, 0.0), Span(-1, -1));
}

TEST_F(CacheInstanceTest, AudioRangeLoadsTheBlocksItWillReadAndNoneBeyondTheFile) {
  make(768);
  cache_->preloadAudioRange(kSound, 0, 0, 48000, 24001, 0.0, 2.0);
  cache_->audioCache().wait();
  EXPECT_EQ(reads(kSound + L"@0"), 1);
  EXPECT_EQ(reads(kSound + L"@1"), 1);
  cache_->preloadAudioRange(kSound, 0, 0, 48000, 48000, 0.0, 8.0);  // blocks 0 to 7 of a 3-block file
  cache_->audioCache().wait();
  EXPECT_EQ(reads(kSound + L"@2"), 1);
  EXPECT_EQ(reads(kSound + L"@3"), 0);
  EXPECT_TRUE(cache_->getAudioBlock(kSound, 0, 1));
  EXPECT_EQ(reads(kSound + L"@1"), 1);

  installRenderers();
  cache_->preloadAudioRange(kScene, 0, 0, 48000, 1024, 1.5, 1.0);
  EXPECT_EQ(renderedBlocks_, (std::vector<std::int32_t>{1}));
  EXPECT_TRUE(cache_->getAudioBlock(kScene, 0, 1));
}

TEST_F(CacheInstanceTest, GpuImagesAreMadeOnTheGpuThreadAndSharedWithinTheLimit) {
  constexpr std::uint64_t kImage = 256 * 256 * 8;
  gpu_ = std::make_unique<FakeGpu>();
  make(768, 1, gpu_->convert.get());
  const std::size_t texturesBefore = gpu_->texturesMade();
  const auto shared = cache_->getResourceImage(L"/media/a.fake");
  ASSERT_TRUE(shared);
  // Its texture exists already: a buffer made on this thread would wait for its first use.
  EXPECT_EQ(gpu_->texturesMade(), texturesBefore + 1);
  EXPECT_EQ(cache_->getResourceImage(L"/media/a.fake"), shared);
  EXPECT_EQ(reads(L"/media/a.fake#0"), 1);

  // The GPU thread itself may ask for an image not yet loaded: it waits for the image
  // cache's worker alone.
  std::shared_ptr<Media::ResourceBuffer> onGpu;
  gpu_->device.run([&] { onGpu = cache_->getResourceImage(L"/media/b.fake"); });
  ASSERT_TRUE(onGpu);
  const auto copy = cache_->getResourceImageCopy(L"/media/a.fake");
  ASSERT_TRUE(copy);
  EXPECT_NE(copy.get(), shared.get());
  EXPECT_EQ(cache_->vramCounters().running, 4 * kImage);

  cache_->beginFrame();
  EXPECT_EQ(cache_->vramCounters().running, 0u);
  EXPECT_EQ(cache_->vramCounters().lastFrame, 4 * kImage);
  // That frame asked for 2 MiB, beyond the limit of 1: copies no longer go through the
  // cache, which keeps its entries.
  ASSERT_TRUE(cache_->getResourceImageCopy(L"/media/c.fake"));
  EXPECT_FALSE(cache_->vramCache().holds(ImageCacheKey{L"/media/c.fake", 0}));
  EXPECT_EQ(cache_->vramCache().count(), 2u);

  // Asking ahead loads the CPU image only; the GPU copy is made at its first use.
  cache_->preloadResourceImage(L"/media/d.fake");
  cache_->imageCache().wait();
  EXPECT_TRUE(cache_->imageCache().holds(ImageCacheKey{L"/media/d.fake", 0}));
  EXPECT_FALSE(cache_->vramCache().holds(ImageCacheKey{L"/media/d.fake", 0}));
}

}  // namespace
