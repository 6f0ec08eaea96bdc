#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "sync/Event.h"
#include "system/Exception.h"
#include "system/Log.h"
#include "worker/WorkerThread.h"

namespace {

using namespace std::chrono_literals;
using Worker::WorkerThread;

// A guard against a hang, never a timing assertion.
constexpr auto kGuard = 10s;

// Tasks append their marks; the test reads them after a barrier.
struct Marks {
  std::mutex mutex;
  std::vector<std::string> list;
  void add(std::string mark) {
    std::lock_guard lock(mutex);
    list.push_back(std::move(mark));
  }
};

TEST(WorkerThread, RunsInOrderCancelsByKindAndWaitsAtTheBarrier) {
  WorkerThread worker("Test");
  Sync::Event gate;
  Marks marks;
  worker.post(0, [&] { gate.wait(); });  // holds the queue while the others line up
  worker.post(1, [&] { marks.add("a"); });
  worker.post(2, [&] { marks.add("x"); });
  worker.post(1, [&] {
    marks.add("b");
    worker.post(1, [&] { marks.add("posted by b"); });
  });
  worker.post(2, [&] { marks.add("y"); });
  worker.post(1, [&] { marks.add("c"); });
  worker.cancel(2);
  worker.cancel(7);
  gate.set();
  worker.wait();
  worker.wait();  // the task posted by b ran before the second barrier
  EXPECT_EQ(marks.list, (std::vector<std::string>{"a", "b", "c", "posted by b"}));
  EXPECT_FALSE(worker.isBusy());
}

TEST(WorkerThread, BoundedPostWaitsForATaskToBeTakenNotFinished) {
  WorkerThread worker("RenderObjectWorkerAudio");
  worker.setMax(10);
  Sync::Event firstRunning, releaseFirst, releaseSecond;
  worker.post(0, [&] {
    firstRunning.set();
    releaseFirst.wait();
  });
  ASSERT_TRUE(firstRunning.waitFor(kGuard));  // taken: its slot is free again
  worker.post(0, [&] { releaseSecond.wait(); });
  for (int i = 0; i < 9; ++i) worker.post(1, [] {});

  Sync::Event eleventhPosted;
  std::thread producer([&] {
    worker.post(1, [] {});
    eleventhPosted.set();
  });
  worker.cancel(7);  // nothing of that kind is queued, so no slot may come free
  EXPECT_FALSE(eleventhPosted.waitFor(50ms));
  // The worker now takes the second task, which keeps running: that alone frees a slot.
  releaseFirst.set();
  EXPECT_TRUE(eleventhPosted.waitFor(kGuard));
  EXPECT_TRUE(worker.isBusy());
  releaseSecond.set();
  producer.join();
  worker.wait();
}

TEST(WorkerThread, CancelFreesTheSlotsABlockedProducerWaitsFor) {
  WorkerThread worker("Bounded");
  worker.setMax(2);
  Sync::Event running, gate;
  Marks marks;
  worker.post(0, [&] {
    running.set();
    gate.wait();
  });
  ASSERT_TRUE(running.waitFor(kGuard));
  worker.post(1, [&] { marks.add("cancelled"); });
  worker.post(1, [&] { marks.add("cancelled"); });
  Sync::Event posted;
  std::thread producer([&] {
    worker.post(1, [&] { marks.add("posted after cancel"); });
    posted.set();
  });
  worker.cancel(1);
  EXPECT_TRUE(posted.waitFor(kGuard));  // while the gate still holds the worker
  gate.set();
  producer.join();
  worker.wait();
  EXPECT_EQ(marks.list, (std::vector<std::string>{"posted after cancel"}));
}

TEST(WorkerThread, StopFinishesTheRunningTaskAndDropsTheRest) {
  Marks marks;
  auto worker = std::make_unique<WorkerThread>("Stopping");
  worker->setMax(1);
  Sync::Event running, release;
  worker->post(0, [&] {
    running.set();
    release.wait();
    marks.add("running task finished");
  });
  ASSERT_TRUE(running.waitFor(kGuard));
  worker->post(0, [&] { marks.add("queued"); });
  // Blocked at the bound; the stop lets it go and its task is dropped.
  std::thread blockedProducer([&] { worker->post(0, [&] { marks.add("blocked"); }); });
  std::thread stopper([&] { worker->stop(); });
  while (worker->isRunning()) std::this_thread::yield();
  release.set();
  stopper.join();
  blockedProducer.join();
  worker->post(0, [&] { marks.add("after stop"); });
  EXPECT_EQ(marks.list, (std::vector<std::string>{"running task finished"}));
  EXPECT_THROW(worker->wait(), System::NoteException);
}

// Each round lets the thread reach its idle wait, or not, just as the stop comes.
TEST(WorkerThread, StopNeverMissesAnIdleThread) {
  for (int round = 0; round < 1000; ++round) {
    WorkerThread worker("Idle");
    if (round % 3 == 0) worker.post(0, [] {});
  }
}

TEST(WorkerThread, WaitAndStopFromTheWorkersOwnThreadFailInsteadOfDeadlocking) {
  WorkerThread worker("Self");
  bool waitRefused = false;
  std::error_code stopError;
  worker.post(0, [&] {
    try {
      worker.wait();
    } catch (const System::NoteException&) {
      waitRefused = true;
    }
    try {
      worker.stop();
    } catch (const std::system_error& e) {
      stopError = e.code();
    }
  });
  worker.wait();
  EXPECT_TRUE(waitRefused);
  EXPECT_EQ(stopError, std::errc::resource_deadlock_would_occur);
  EXPECT_TRUE(worker.isRunning());
}

TEST(WorkerThread, AFailingTaskIsReportedAndTheWorkerGoesOn) {
  std::vector<std::string> errors;
  System::Log::setHandler([&](const System::Log::Type& type, const char* place, const char* message) {
    if (std::string(place) == "Worker::WorkerThread::processTask") {
      errors.push_back(std::string(type.name) + " " + message);
    }
  });
  std::exception_ptr reported;
  WorkerThread::setExceptionReporter([&](std::exception_ptr e) { reported = e; });
  {
    WorkerThread worker("RenderVideoWorker");
    bool nextRan = false;
    worker.post(0, [] { throw System::NoteException("Test::task", "broken."); });
    worker.post(0, [&] { nextRan = true; });
    worker.wait();
    EXPECT_TRUE(nextRan);
  }
  WorkerThread::setExceptionReporter(nullptr);
  System::Log::resetHandler();
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0], "ERROR [RenderVideoWorker] exception.\nbroken.\n\n[Place]\nTest::task()");
  ASSERT_TRUE(reported);
  EXPECT_THROW(std::rethrow_exception(reported), System::NoteException);
}

}  // namespace
