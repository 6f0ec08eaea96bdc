#include "worker/WorkerThread.h"

#include <algorithm>
#include <atomic>
#include <chrono>

#include "system/Exception.h"
#include "system/Log.h"
#include "system/ThreadPriority.h"

namespace Worker {

namespace {

std::function<void(std::exception_ptr)>& exceptionReporter() {
  static std::function<void(std::exception_ptr)> reporter;
  return reporter;
}

std::atomic<int> workerPriority{0};

}  // namespace

void WorkerThread::setExceptionReporter(std::function<void(std::exception_ptr)> reporter) {
  exceptionReporter() = std::move(reporter);
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
  std::int32_t removed = 0;
  {
    std::lock_guard lock(mutex_);
    const auto first = std::remove_if(queue_.begin(), queue_.end(),
                                      [kind](const QueuedTask& queued) { return queued.kind == kind; });
    removed = static_cast<std::int32_t>(queue_.end() - first);
    queue_.erase(first, queue_.end());
  }
  if (removed > 0) semaphore_.release(removed);
}

void WorkerThread::wait() {
  if (std::this_thread::get_id() == thread_.get_id() || !running_) {
    throw System::NoteException("Worker::WorkerThread::wait", "cannot wait for a stopped worker or for itself.",
                                std::string(name_));
  }
  Sync::Event done;
  post(kBarrierKind, [&done] { done.set(); });
  // A stop() meanwhile drops the barrier task: look again now and then.
  while (!done.waitFor(std::chrono::milliseconds(100))) {
    if (!running_) return;
  }
}

void WorkerThread::stop() {
  if (thread_.get_id() == std::this_thread::get_id()) {
    thread_.join();  // throws resource_deadlock_would_occur, as a self-join must
  }
  if (!running_.exchange(false)) return;
  wake_.set();
  semaphore_.open();
  if (thread_.joinable()) thread_.join();
  std::lock_guard lock(mutex_);
  queue_.clear();
}

void WorkerThread::threadMain() {
  System::Process::setThreadPriority(workerPriority);
  while (running_) {
    {
      std::unique_lock lock(mutex_);
      if (queue_.empty()) {
        wake_.reset();
        lock.unlock();
        wake_.wait();
      }
    }
    while (running_ && processTask()) {
    }
  }
}

bool WorkerThread::processTask() {
  busy_ = true;
  QueuedTask next;
  {
    std::lock_guard lock(mutex_);
    if (queue_.empty()) {
      busy_ = false;
      return false;
    }
    next = std::move(queue_.front());
    queue_.pop_front();
  }
  // The slot is free once the task is taken, not when it has finished.
  semaphore_.release();
  try {
    next.task();
  } catch (const std::exception& exception) {
    System::Log::error("Worker::WorkerThread::processTask", "[%s] exception.\n%s", name_, exception.what());
    if (exceptionReporter()) exceptionReporter()(std::current_exception());
  }
  busy_ = false;
  return true;
}

}  // namespace Worker
