#include "render/RenderVideoWorker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "edit/EditService.h"
#include "edit/Scene.h"
#include "media/DeviceFakeBackend.h"
#include "media/GraphicsDevice.h"
#include "media/image/ImageBuffer.h"
#include "sync/Event.h"
#include "system/Log.h"

namespace {

using Render::RenderVideoWorker;
using Render::SectionArguments;
using namespace std::chrono_literals;

// Log lines from any thread, as "LEVEL message".
class LogRecord {
 public:
  LogRecord() {
    System::Log::setHandler([this](const System::Log::Type& type, const char*, const char* message) {
      std::lock_guard lock(mutex_);
      lines_.push_back(std::string(type.name) + " " + message);
    });
  }
  ~LogRecord() { System::Log::resetHandler(); }
  bool mentions(const std::string& text) const {
    std::lock_guard lock(mutex_);
    return std::any_of(lines_.begin(), lines_.end(), [&](const std::string& line) { return line.find(text) != std::string::npos; });
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

// Waits, within a generous time, for something another thread does.
template <class Condition>
bool eventually(Condition condition) {
  for (int i = 0; i < 5000 && !condition(); ++i) std::this_thread::sleep_for(1ms);
  return condition();
}

class VideoWorker : public ::testing::Test {
 protected:
  VideoWorker() { Worker::WorkerThread::setExceptionReporter([this](std::exception_ptr) { ++reported_; }); }
  ~VideoWorker() override {
    worker_.stop();
    Worker::WorkerThread::setExceptionReporter(nullptr);
  }

  RenderVideoWorker::FrameCallback record() {
    return [this](std::int32_t frame, Media::RenderBuffer&, Anchor::AnchorList&) {
      std::lock_guard lock(mutex_);
      delivered_.push_back(frame);
    };
  }
  std::vector<std::int32_t> delivered() {
    std::lock_guard lock(mutex_);
    return delivered_;
  }
  std::size_t gpuCalls(const std::string& call) {
    std::size_t count = 0;
    device_.run([&] { count = std::count(fake_->calls.begin(), fake_->calls.end(), call); });
    return count;
  }

  LogRecord log_;
  MediaTest::FakeBackend* fake_ = nullptr;
  Media::GraphicsDevice device_{[this] {
                                  auto backend = std::make_unique<MediaTest::FakeBackend>();
                                  fake_ = backend.get();
                                  return backend;
                                },
                                Media::DeviceSettings{}};
  Edit::EditService edit_;
  RenderVideoWorker worker_{device_, edit_, Render::VideoWorkerSettings{1920 * 1080, {}, nullptr}};
  std::atomic<int> reported_{0};
  std::mutex mutex_;
  std::vector<std::int32_t> delivered_;
};

TEST_F(VideoWorker, EachModeIsReplacedOrSkippedByItsOwnRule) {
  Sync::Event entered;
  Sync::Event release;
  worker_.setLayerWalk([&](RenderVideoWorker&, const SectionArguments& arguments) {
    if (arguments.frame != 0) return;
    entered.set();
    release.wait();
  });
  worker_.setEarliestFrame(5);
  worker_.requestRenderingFrame(RenderVideoWorker::Preview, 0, record());
  entered.wait();
  // While frame 0 renders: a burst of previews, single frames and playback frames.
  for (std::int32_t frame = 1; frame <= 10; ++frame) worker_.requestRenderingFrame(RenderVideoWorker::Preview, frame, record());
  worker_.requestRenderingFrame(RenderVideoWorker::Single, 100, record());
  worker_.requestRenderingFrame(RenderVideoWorker::Playback, 3, record());
  worker_.requestRenderingFrame(RenderVideoWorker::Playback, 6, record());
  worker_.requestRenderingFrame(RenderVideoWorker::Preview, 11, record());
  worker_.requestRenderingFrame(RenderVideoWorker::Single, 101, record());
  release.set();
  worker_.waitRendering();

  // The running preview goes on; of the waiting ones only the newest stays; single
  // frames all come; playback behind the clock is skipped without a word.
  EXPECT_EQ(delivered(), (std::vector<std::int32_t>{0, 100, 6, 11, 101}));
  EXPECT_TRUE(log_.mentions("VERBOSE rendered video frame [6]"));
  EXPECT_FALSE(log_.mentions("rendered video frame [3]"));
}

TEST_F(VideoWorker, AnEmptySceneIsItsSizeClearedAndOnlyThePreviewGetsGuides) {
  worker_.setLayerWalk([](RenderVideoWorker& worker, const SectionArguments& arguments) {
    if (arguments.guides) worker.postObjectTask([&worker] { worker.guides().push_back(Anchor::AnchorItem{}); });
  });
  struct Seen {
    std::uint32_t width, height;
    std::size_t guides;
  };
  std::vector<Seen> seen;
  const auto look = [&](std::int32_t, Media::RenderBuffer& buffer, Anchor::AnchorList& guides) {
    seen.push_back({buffer.width(), buffer.height(), guides.size()});
  };
  worker_.requestRenderingFrame(RenderVideoWorker::Preview, 0, look);
  worker_.requestRenderingFrame(RenderVideoWorker::Single, 0, look);
  worker_.waitRendering();
  const std::size_t texturesAfterTwoFrames = gpuCalls("createTexture");
  worker_.requestRenderingFrame(RenderVideoWorker::Playback, 0, look);
  worker_.waitRendering();

  ASSERT_EQ(seen.size(), 3u);
  EXPECT_EQ(seen[0].width, 1920u);
  EXPECT_EQ(seen[0].height, 1080u);
  EXPECT_EQ(seen[0].guides, 1u);
  EXPECT_EQ(seen[1].guides, 0u);
  EXPECT_EQ(seen[2].guides, 0u);
  EXPECT_EQ(gpuCalls("clear"), 3u);
  // The frame's texture is kept for the next frame once the callback has let it go.
  EXPECT_EQ(gpuCalls("createTexture"), texturesAfterTwoFrames);
}

TEST_F(VideoWorker, AFrameWhoseDrawingFailedIsNotDelivered) {
  worker_.setLayerWalk([](RenderVideoWorker& worker, const SectionArguments& arguments) {
    if (arguments.frame == 1) worker.postObjectTask([] { throw std::runtime_error("effect failed"); });
  });
  worker_.requestRenderingFrame(RenderVideoWorker::Single, 1, record());
  worker_.requestRenderingFrame(RenderVideoWorker::Single, 2, record());
  worker_.waitRendering();
  EXPECT_EQ(delivered(), std::vector<std::int32_t>{2});
  EXPECT_EQ(reported_, 1);
}

TEST_F(VideoWorker, TheWalkerStaysAtMostEightTasksAheadOfTheGpu) {
  Sync::Event release;
  std::atomic<int> posted{0};
  worker_.setLayerWalk([&](RenderVideoWorker& worker, const SectionArguments&) {
    for (int i = 0; i < 20; ++i) {
      worker.postObjectTask([&release, i] {
        if (i == 0) release.wait();
      });
      ++posted;
    }
  });
  worker_.requestRenderingFrame(RenderVideoWorker::Single, 0, record());
  // One task runs, eight wait, and the walker waits for room.
  ASSERT_TRUE(eventually([&] { return posted == 9; }));
  std::this_thread::sleep_for(20ms);
  EXPECT_EQ(posted, 9);
  release.set();
  worker_.waitRendering();
  EXPECT_EQ(posted, 20);
  EXPECT_EQ(delivered(), std::vector<std::int32_t>{0});
}

TEST_F(VideoWorker, StopWithFramesInFlightDeliversNothingIncompleteAndNothingAfter) {
  std::atomic<int> drawn{0};
  std::atomic<bool> incompleteDelivered{false};
  worker_.setLayerWalk([&](RenderVideoWorker& worker, const SectionArguments&) {
    drawn = 0;
    for (int i = 0; i < 40; ++i) {
      worker.postObjectTask([&drawn] {
        std::this_thread::sleep_for(200us);
        ++drawn;
      });
    }
  });
  std::atomic<int> callbacks{0};
  for (std::int32_t frame = 0; frame < 20; ++frame) {
    worker_.requestRenderingFrame(RenderVideoWorker::Single, frame, [&](std::int32_t, Media::RenderBuffer&, Anchor::AnchorList&) {
      if (drawn != 40) incompleteDelivered = true;
      ++callbacks;
    });
  }
  ASSERT_TRUE(eventually([&] { return callbacks >= 1; }));
  worker_.stop();
  const int atStop = callbacks;
  std::this_thread::sleep_for(20ms);
  EXPECT_EQ(callbacks, atStop);
  EXPECT_LT(atStop, 20);
  EXPECT_FALSE(incompleteDelivered);
  EXPECT_EQ(reported_, 0);  // a stop is not a fault
  worker_.requestRenderingFrame(RenderVideoWorker::Single, 99, record());  // dropped, not a crash
}

TEST_F(VideoWorker, NestedRendersFindASceneInsideItselfAndNothingElse) {
  std::shared_ptr<Edit::Scene> inner = edit_.getScene(1);
  inner->width = 640;
  inner->height = 360;
  const std::shared_ptr<Edit::Scene> outer = edit_.currentScene();
  std::vector<std::shared_ptr<Media::ImageBuffer>> images;
  std::shared_ptr<RenderVideoWorker::RenderingBuffer> below;
  std::vector<std::string> walks;
  worker_.setLayerWalk([&](RenderVideoWorker& worker, const SectionArguments& arguments) {
    walks.push_back(std::to_string(arguments.scene.id) + (arguments.subRender ? " sub" : "") + " frame " +
                    std::to_string(arguments.frame) + " offset " + std::to_string(arguments.frameOffset) + " last " +
                    std::to_string(arguments.lastLayer));
    if (arguments.scene.id != 0 || arguments.subRender) return;
    const auto keep = [&](std::shared_ptr<Media::ImageBuffer> image) { images.push_back(std::move(image)); };
    // One scene at two moments of the frame is not a recursion; the scene itself is.
    worker.renderSceneImage(inner, 3, keep);
    worker.renderSceneImage(inner, 4, keep);
    worker.renderSceneImage(outer, 5, keep);
    // The layers below, rendered beside the scene's own running walk.
    below = worker.renderLayers(arguments.scene, 7, 2, 4);
  });
  worker_.requestRenderingFrame(RenderVideoWorker::Single, 9, record());
  worker_.waitRendering();

  EXPECT_EQ(walks, (std::vector<std::string>{"0 frame 9 offset 0 last 2147483647", "1 frame 3 offset 0 last 2147483647",
                                              "1 frame 4 offset 0 last 2147483647", "0 sub frame 7 offset 2 last 4"}));
  EXPECT_TRUE(log_.mentions("WARN recursive scene. index=0 num=1"));
  ASSERT_EQ(images.size(), 3u);
  EXPECT_EQ(images[0]->width(), 640u);
  EXPECT_EQ(images[2]->width(), 1920u);  // the recursive one stays a clear frame of its size
  ASSERT_NE(below, nullptr);
  EXPECT_EQ(below->width(), 1920u);
  EXPECT_EQ(delivered(), std::vector<std::int32_t>{9});
}

}  // namespace
