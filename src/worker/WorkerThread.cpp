#include "worker/WorkerThread.h"

#include <atomic>
#include <memory>
#include <utility>

#include "system/Exception.h"
#include "system/Log.h"
#include "system/ThreadPriority.h"

namespace Worker {

namespace {

std::mutex reporterMutex;
std::function<void(std::exception_ptr)> exceptionReporter;

std::atomic<int> workerPriority{0};

void report(std::exception_ptr exception) {
  std::function<void(std::exception_ptr)> reporter;
  {
    std::lock_guard lock(reporterMutex);
    reporter = exceptionReporter;
  }
  if (reporter) reporter(std::move(exception));
}

}  // namespace

void WorkerThread::setExceptionReporter(std::function<void(std::exception_ptr)> reporter) {
  std::lock_guard lock(reporterMutex);
  exceptionReporter = std::move(reporter);
}

void WorkerThread::reportTaskFailure(const char* workerName, const std::exception& exception) {
  System::Log::error("Worker::WorkerThread::processTask", "[%s] exception.\n%s", workerName, exception.what());
  report(std::current_exception());
}

void WorkerThread::setThreadPriority(int priority) noexcept { workerPriority = priority; }

WorkerThread::WorkerThread(const char* name) : name_(name), thread_([this] { threadMain(); }) {}

WorkerThread::~WorkerThread() { stop(); }

void WorkerThread::post(std::int32_t kind, Task task) {
  if (!running_) return;
  semaphore_.acquire();
  {
    std::lock_guard lock(mutex_);
    // stop() may have come while this producer waited for a slot.
    if (!running_) return;
    queue_.push_back(QueuedTask{kind, std::move(task)});
  }
  wake_.set();
}

void WorkerThread::cancel(std::int32_t kind) {
  // Dropped tasks are destroyed outside the mutex: what they hold may post to this
  // worker, or let a barrier's waiter go, as it goes.
  std::deque<QueuedTask> dropped;
  {
    std::lock_guard lock(mutex_);
    std::deque<QueuedTask> kept;
    for (QueuedTask& queued : queue_) (queued.kind == kind ? dropped : kept).push_back(std::move(queued));
    queue_.swap(kept);
  }
  if (!dropped.empty()) semaphore_.release(static_cast<std::int32_t>(dropped.size()));
}

void WorkerThread::wait() {
  if (std::this_thread::get_id() == thread_.get_id() || !running_) {
    throw System::NoteException("Worker::WorkerThread::wait", "cannot wait for a stopped worker or for itself.",
                                std::string(name_));
  }
  Sync::Event done;
  // The barrier signals when the task is destroyed, which follows its run and also
  // happens when stop() or cancel(kBarrierKind) drops it: the caller never waits for a
  // task that will not come.
  std::shared_ptr<Sync::Event> signal(&done, [](Sync::Event* event) { event->set(); });
  post(kBarrierKind, [signal = std::move(signal)] {});
  done.wait();
}

void WorkerThread::stop() {
  if (std::this_thread::get_id() == thread_.get_id()) {
    thread_.join();  // throws resource_deadlock_would_occur, as a self-join must
  }
  {
    // Cleared under the mutex, so the thread either sees it before it decides to sleep
    // or is already asleep when the wake event below is set.
    std::lock_guard lock(mutex_);
    if (!running_) return;
    running_ = false;
  }
  wake_.set();
  semaphore_.open();
  thread_.join();
  std::deque<QueuedTask> dropped;
  std::lock_guard lock(mutex_);
  dropped.swap(queue_);
}

void WorkerThread::threadMain() {
  System::Process::setThreadPriority(workerPriority);
  for (;;) {
    {
      std::unique_lock lock(mutex_);
      if (!running_) return;
      if (queue_.empty()) {
        // Reset under the mutex: post() and stop() change the state under it before
        // they set the event, so no wake-up is lost between this check and the wait.
        wake_.reset();
        lock.unlock();
        wake_.wait();
        continue;
      }
    }
    while (running_ && processTask()) {
    }
  }
}

bool WorkerThread::processTask() {
  QueuedTask next;
  {
    std::lock_guard lock(mutex_);
    if (queue_.empty()) return false;
    next = std::move(queue_.front());
    queue_.pop_front();
    busy_ = true;
  }
  // The slot is free once the task is taken, not when it has finished.
  semaphore_.release();
  try {
    next.task();
  } catch (const std::exception& exception) {
    reportTaskFailure(name_, exception);
  }
  busy_ = false;
  return true;
}

}  // namespace Worker
