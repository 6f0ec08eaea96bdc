// System::ReaderWriterLock on a POSIX rwlock of the writer-preferring kind. The plain
// default kind (and std::shared_mutex on top of it) lets new readers in ahead of a
// waiting writer, which is exactly what the model's lock must not do.
#include "system/ReaderWriterLock.h"

#include <pthread.h>

#include <cerrno>

#include "system/Exception.h"

namespace System {

struct ReaderWriterLock::Native {
  pthread_rwlock_t lock;
};

namespace {

void check(int result, const char* call, const char* place) {
  if (result != 0) throw PlatformCallException(call, place, result);
}

// A try that finds the lock taken is an answer, not a failure.
bool checkTry(int result, const char* call, const char* place) {
  if (result == EBUSY) return false;
  check(result, call, place);
  return true;
}

}  // namespace

ReaderWriterLock::ReaderWriterLock() : native_(std::make_unique<Native>()) {
  constexpr const char* kPlace = "System::ReaderWriterLock::ReaderWriterLock";
  pthread_rwlockattr_t attributes;
  check(pthread_rwlockattr_init(&attributes), "pthread_rwlockattr_init", kPlace);
  const int kind = pthread_rwlockattr_setkind_np(&attributes, PTHREAD_RWLOCK_PREFER_WRITER_NONRECURSIVE_NP);
  const int init = kind == 0 ? pthread_rwlock_init(&native_->lock, &attributes) : 0;
  pthread_rwlockattr_destroy(&attributes);
  check(kind, "pthread_rwlockattr_setkind_np", kPlace);
  check(init, "pthread_rwlock_init", kPlace);
}

ReaderWriterLock::~ReaderWriterLock() { pthread_rwlock_destroy(&native_->lock); }

void ReaderWriterLock::lock() {
  check(pthread_rwlock_wrlock(&native_->lock), "pthread_rwlock_wrlock", "System::ReaderWriterLock::lock");
}

bool ReaderWriterLock::try_lock() {
  return checkTry(pthread_rwlock_trywrlock(&native_->lock), "pthread_rwlock_trywrlock",
                  "System::ReaderWriterLock::try_lock");
}

void ReaderWriterLock::unlock() {
  check(pthread_rwlock_unlock(&native_->lock), "pthread_rwlock_unlock", "System::ReaderWriterLock::unlock");
}

void ReaderWriterLock::lock_shared() {
  check(pthread_rwlock_rdlock(&native_->lock), "pthread_rwlock_rdlock", "System::ReaderWriterLock::lock_shared");
}

bool ReaderWriterLock::try_lock_shared() {
  return checkTry(pthread_rwlock_tryrdlock(&native_->lock), "pthread_rwlock_tryrdlock",
                  "System::ReaderWriterLock::try_lock_shared");
}

void ReaderWriterLock::unlock_shared() {
  check(pthread_rwlock_unlock(&native_->lock), "pthread_rwlock_unlock", "System::ReaderWriterLock::unlock_shared");
}

}  // namespace System
