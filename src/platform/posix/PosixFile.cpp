// System::File on POSIX descriptors.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "system/Exception.h"
#include "system/File.h"
#include "system/Text.h"

namespace System {

File::~File() { close(); }

File::File(File&& other) noexcept : descriptor_(other.descriptor_) { other.descriptor_ = -1; }

File& File::operator=(File&& other) noexcept {
  if (this != &other) {
    close();
    descriptor_ = other.descriptor_;
    other.descriptor_ = -1;
  }
  return *this;
}

void File::open(const std::wstring& path, Mode mode) {
  if (tryOpen(path, mode) != 0) throw NoteException("System::File::open", "failed to open file.", Text::toUtf8(path));
}

int File::tryOpen(const std::wstring& path, Mode mode) {
  close();
  int flags = O_CLOEXEC;
  switch (mode) {
    case Mode::Read:
      flags |= O_RDONLY;
      break;
    case Mode::Write:
    case Mode::WriteShared:
      flags |= O_WRONLY | O_CREAT | O_TRUNC;
      break;
    case Mode::Append:
      flags |= O_WRONLY | O_CREAT | O_APPEND;
      break;
  }
  const std::string native = Text::toUtf8(path);
  int descriptor = -1;
  do {
    descriptor = ::open(native.c_str(), flags, 0644);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) return errno;
  descriptor_ = descriptor;
  return 0;
}

void File::close() noexcept {
  if (descriptor_ >= 0) {
    ::close(descriptor_);
    descriptor_ = -1;
  }
}

std::size_t File::read(void* buffer, std::size_t size) {
  for (;;) {
    const ssize_t got = ::read(descriptor_, buffer, size);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) throw PlatformCallException("read", "System::File::read");
  }
}

std::size_t File::readBlock(void* buffer, std::size_t size) {
  auto* bytes = static_cast<char*>(buffer);
  std::size_t total = 0;
  while (total < size) {
    const ssize_t got = ::read(descriptor_, bytes + total, size - total);
    if (got < 0) {
      if (errno == EINTR) continue;
      throw PlatformCallException("read", "System::File::readBlock");
    }
    if (got == 0) break;
    total += static_cast<std::size_t>(got);
  }
  return total;
}

void File::write(const void* buffer, std::size_t size) {
  const auto* bytes = static_cast<const char*>(buffer);
  std::size_t total = 0;
  while (total < size) {
    const ssize_t put = ::write(descriptor_, bytes + total, size - total);
    if (put < 0) {
      if (errno == EINTR) continue;
      throw PlatformCallException("write", "System::File::write");
    }
    // A device that takes nothing is full or broken; fail rather than spin.
    if (put == 0) throw ErrorCodeException("System::File::write", EIO);
    total += static_cast<std::size_t>(put);
  }
}

std::int64_t File::seek(std::int64_t offset, Origin origin) {
  const int whence = origin == Origin::Begin ? SEEK_SET : origin == Origin::Current ? SEEK_CUR : SEEK_END;
  const off_t position = ::lseek(descriptor_, static_cast<off_t>(offset), whence);
  if (position < 0) throw PlatformCallException("lseek", "System::File::seek");
  return static_cast<std::int64_t>(position);
}

std::int64_t File::size() {
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) throw PlatformCallException("fstat", "System::File::size");
  return static_cast<std::int64_t>(status.st_size);
}

void File::flushDirectory(const std::wstring& path) {
  const std::string native = Text::toUtf8(path);
  int descriptor = -1;
  do {
    descriptor = ::open(native.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) throw PlatformCallException("open", "System::File::flushDirectory");
  const int result = ::fsync(descriptor);
  const int error = errno;
  ::close(descriptor);
  // Some file systems (network shares among them) cannot flush a folder and say EINVAL:
  // there is nothing more to be done for the rename, and the save has succeeded.
  if (result != 0 && error != EINVAL) throw PlatformCallException("fsync", "System::File::flushDirectory", error);
}

void File::flushToDisk() {
  if (::fsync(descriptor_) != 0) throw PlatformCallException("fsync", "System::File::flushToDisk");
}

}  // namespace System
