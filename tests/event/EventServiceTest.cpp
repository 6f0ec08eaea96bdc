#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "dialog/MessageBox.h"
#include "event/EventService.h"
#include "event/Subscriptions.h"
#include "sync/Event.h"
#include "system/Exception.h"
#include "system/Log.h"

namespace {

// The "main thread" is the test's own thread; it runs what was posted when told to.
class QueuedPoster : public Event::MainThreadPoster {
 public:
  void post(std::function<void()> task) override {
    {
      std::lock_guard lock(mutex_);
      tasks_.push_back(std::move(task));
    }
    posted_.set();
  }
  int runPosted() {
    std::deque<std::function<void()>> tasks;
    {
      std::lock_guard lock(mutex_);
      tasks.swap(tasks_);
      posted_.reset();
    }
    for (auto& task : tasks) task();
    return static_cast<int>(tasks.size());
  }
  // A main loop on its way down discards what is still queued.
  void dropPosted() {
    std::lock_guard lock(mutex_);
    tasks_.clear();
    posted_.reset();
  }
  Sync::Event& posted() { return posted_; }

 private:
  std::mutex mutex_;
  std::deque<std::function<void()>> tasks_;
  Sync::Event posted_;
};

class RecordingPresenter : public Dialog::MessagePresenter {
 public:
  std::optional<bool> show(const std::wstring& text, const std::wstring& caption, Dialog::MessageKind) override {
    shown.emplace_back(text, caption);
    return true;
  }
  std::vector<std::pair<std::wstring, std::wstring>> shown;
};

class EventServiceTest : public ::testing::Test {
 protected:
  void SetUp() override {
    events_.setPoster(&poster_);
    events_.setMainThread(std::this_thread::get_id());
  }
  QueuedPoster poster_;
  Event::EventService events_;
};

TEST_F(EventServiceTest, DestroyingTheOwnerRemovesAllItsSubscriptions) {
  std::vector<std::string> calls;
  auto owner = std::make_unique<Event::Subscriptions>();
  Event::Subscriptions other;
  owner->add(events_.frameChanged, [&](std::int32_t frame) { calls.push_back("owner " + std::to_string(frame)); });
  other.add(events_.frameChanged, [&](std::int32_t frame) { calls.push_back("other " + std::to_string(frame)); });
  owner->add(events_.timelineChanged, [&] { calls.push_back("owner timeline"); });
  events_.frameChanged.fire(7);
  owner.reset();
  events_.frameChanged.fire(8);
  events_.timelineChanged.fire();
  EXPECT_EQ(calls, (std::vector<std::string>{"owner 7", "other 7", "other 8"}));
  EXPECT_EQ(events_.timelineChanged.size(), 0u);
}

TEST_F(EventServiceTest, AListenerGoneWhileTheListFiresIsSkipped) {
  std::vector<std::string> calls;
  auto second = std::make_unique<Event::Subscriptions>();
  Event::Subscriptions first;
  first.add(events_.sceneChanged, [&](std::int32_t) {
    calls.push_back("first");
    second.reset();
  });
  second->add(events_.sceneChanged, [&](std::int32_t) { calls.push_back("second"); });
  events_.sceneChanged.fire(1);
  events_.sceneChanged.fire(2);
  EXPECT_EQ(calls, (std::vector<std::string>{"first", "first"}));
}

TEST_F(EventServiceTest, CommandsFromAnotherThreadArriveOnceOnTheMainThread) {
  Event::Subscriptions listener;
  std::vector<std::pair<std::int32_t, std::int32_t>> frames;
  std::vector<std::thread::id> threads;
  listener.add(events_.previewFrameReady, [&](std::int32_t frame, std::int32_t status) {
    frames.emplace_back(frame, status);
    threads.push_back(std::this_thread::get_id());
  });
  std::thread worker([&] { events_.postPreviewFrameReady(42); });
  worker.join();
  EXPECT_TRUE(frames.empty());
  EXPECT_EQ(poster_.runPosted(), 1);
  EXPECT_EQ(poster_.runPosted(), 0);
  EXPECT_EQ(frames, (std::vector<std::pair<std::int32_t, std::int32_t>>{{42, 1}}));
  EXPECT_EQ(threads.at(0), std::this_thread::get_id());
}

TEST_F(EventServiceTest, AWorkersExceptionIsRethrownOnTheMainThread) {
  std::thread worker([&] {
    try {
      throw System::NoteException("Render::RenderVideoWorker::render", "render failed.");
    } catch (...) {
      events_.postException(std::current_exception());
    }
  });
  worker.join();
  EXPECT_THROW(poster_.runPosted(), System::NoteException);
}

TEST_F(EventServiceTest, SendBlocksTheSenderUntilTheMainThreadRanIt) {
  bool ran = false;
  std::thread sender([&] { events_.sendCopyImage([&] { ran = true; }); });
  ASSERT_TRUE(poster_.posted().waitFor(std::chrono::seconds(10)));
  EXPECT_FALSE(ran);
  poster_.runPosted();
  sender.join();
  EXPECT_TRUE(ran);
  // From the main thread itself a send runs at once.
  bool direct = false;
  events_.sendPluginRequest([&] { direct = true; });
  EXPECT_TRUE(direct);
}

TEST_F(EventServiceTest, ASendReturnsWhatTheWorkThrewAndEndsWhenTheLoopDropsIt) {
  std::exception_ptr caught;
  std::thread failing([&] {
    try {
      events_.sendPluginRequest(
          [] { throw System::NoteException("Plugin::CommonPluginService::request", "refused."); });
    } catch (const System::NoteException&) {
      caught = std::current_exception();
    }
  });
  ASSERT_TRUE(poster_.posted().waitFor(std::chrono::seconds(10)));
  poster_.runPosted();
  failing.join();
  EXPECT_TRUE(caught);

  std::vector<std::string> warnings;
  System::Log::setHandler([&](const System::Log::Type& type, const char* place, const char* message) {
    warnings.push_back(std::string(type.name) + " " + place + " " + message);
  });
  bool ran = false;
  std::thread dropped([&] { events_.sendCopyImage([&] { ran = true; }); });
  ASSERT_TRUE(poster_.posted().waitFor(std::chrono::seconds(10)));
  poster_.dropPosted();
  dropped.join();
  System::Log::resetHandler();
  EXPECT_FALSE(ran);
  EXPECT_EQ(
      warnings,
      (std::vector<std::string>{"WARN Event::EventService::sendCommand the main loop dropped EventCommandType 8."}));
}

TEST_F(EventServiceTest, DialogCommandsShowTheirTextAndTheProgramGoesOn) {
  auto presenter = std::make_shared<RecordingPresenter>();
  Dialog::setPresenter(presenter);
  std::thread worker([&] {
    events_.postExceptionDialog(std::make_exception_ptr(std::runtime_error("cache full.")));
    // The text is the argument of the box, never its format.
    events_.postErrorDialog(L"100% done");
  });
  worker.join();
  EXPECT_EQ(poster_.runPosted(), 2);
  Dialog::setPresenter(nullptr);
  EXPECT_EQ(presenter->shown, (std::vector<std::pair<std::wstring, std::wstring>>{
                                  {L"cache full.", Dialog::exceptionCaption()}, {L"100% done", L"Sorvel Vantor2"}}));
}

TEST_F(EventServiceTest, UnknownCommandTypeWarns) {
  std::vector<std::string> warnings;
  System::Log::setHandler([&](const System::Log::Type& type, const char* place, const char* message) {
    warnings.push_back(std::string(type.name) + " " + place + " " + message);
  });
  events_.processEventCommandMessage(10, std::monostate{});
  System::Log::resetHandler();
  EXPECT_EQ(
      warnings,
      (std::vector<std::string>{"WARN Event::EventService::processEventCommandMessage unknown EventCommandType."}));
}

}  // namespace
