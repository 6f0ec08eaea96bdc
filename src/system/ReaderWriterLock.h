// The model's slim reader/writer lock: the main thread takes it exclusively for an
// edit, render workers take it shared for one frame or audio block. A waiting writer
// bars new readers, so a stream of overlapping render readers cannot starve an edit.
// Any thread may call any operation; the names are those of the standard's Lockable
// and SharedLockable, so std::unique_lock and std::shared_lock work with it.
#pragma once

#include <memory>

namespace System {

class ReaderWriterLock {
 public:
  ReaderWriterLock();
  ~ReaderWriterLock();
  ReaderWriterLock(const ReaderWriterLock&) = delete;
  ReaderWriterLock& operator=(const ReaderWriterLock&) = delete;

  void lock();
  bool try_lock();
  void unlock();

  // Shared holds do not nest: a thread that asks again while a writer waits would
  // wait behind that writer, which waits for the thread's first hold.
  void lock_shared();
  bool try_lock_shared();
  void unlock_shared();

 private:
  struct Native;
  std::unique_ptr<Native> native_;
};

}  // namespace System
