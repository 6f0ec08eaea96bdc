// A named thread with a queue of tasks, run oldest first. Render, export and read-ahead
// work runs on these. post, cancel, wait and stop may be called from any thread except
// where noted; tasks run on the worker's own thread, never under its mutex.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

#include "sync/Event.h"
#include "sync/Semaphore.h"

namespace Worker {

class WorkerThread {
 public:
  using Task = std::function<void()>;
  // Reserved for the barrier of wait(); owners choose their kinds from 0 up.
  static constexpr std::int32_t kBarrierKind = -1;

  explicit WorkerThread(const char* name);
  ~WorkerThread();
  WorkerThread(const WorkerThread&) = delete;
  WorkerThread& operator=(const WorkerThread&) = delete;

  // Bounds the queue: post() then blocks while `maximum` tasks are waiting. Once only.
  void setMax(std::int32_t maximum) { semaphore_.setMax(maximum); }

  // Dropped silently once the worker has stopped.
  void post(std::int32_t kind, Task task);
  // Removes every queued task of `kind`; the running task is not touched.
  void cancel(std::int32_t kind);
  // Returns when everything queued before it has run, or when a stop() meanwhile dropped
  // it. From the worker's own thread or on a stopped worker it could never return, so it
  // throws a NoteException instead.
  void wait();
  // The running task finishes; queued tasks are dropped. From the worker's own thread it
  // fails as a self-join does (std::system_error, resource_deadlock_would_occur).
  void stop();

  bool isRunning() const noexcept { return running_; }
  bool isBusy() const noexcept { return busy_; }
  const char* name() const noexcept { return name_; }

  // Where an exception of a task goes after it is logged: the entry point installs one
  // that posts event command 4. Without one the exception is only logged. Any thread.
  static void setExceptionReporter(std::function<void(std::exception_ptr)> reporter);
  // Logs the exception being handled as a failed task of `workerName` and hands it to the
  // reporter: for tasks that another thread's loop runs on a worker's behalf. Call it
  // inside the catch block.
  static void reportTaskFailure(const char* workerName, const std::exception& exception);
  // The priority that worker threads started from now on give themselves (the
  // WorkerThreadPriority key); one for all workers, there is no per-worker priority.
  static void setThreadPriority(int priority) noexcept;

 private:
  struct QueuedTask {
    std::int32_t kind;
    Task task;
  };

  void threadMain();
  // Runs the oldest task; false when the queue was empty.
  bool processTask();

  const char* name_;
  std::mutex mutex_;
  Sync::Event wake_;
  Sync::Semaphore semaphore_;
  std::deque<QueuedTask> queue_;
  // Written under the mutex; the reads without it (post's early drop, the task loop)
  // may race a stop() and lose nothing by it.
  std::atomic<bool> running_{true};
  std::atomic<bool> busy_{false};
  std::thread thread_;  // last: it starts once everything above exists
};

}  // namespace Worker
