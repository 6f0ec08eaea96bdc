// A file handle whose failures are exceptions, and directory listings. A File belongs
// to one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace System {

class File {
 public:
  enum class Mode {
    Read = 0,         // existing file, for reading
    Write = 1,        // created or truncated, for ini and project files
    WriteShared = 2,  // created or truncated, a log that others may read meanwhile
    Append = 3,       // opened or created, written at the end
  };
  enum class Origin { Begin, Current, End };

  File() = default;
  ~File();
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  File(File&& other) noexcept;
  File& operator=(File&& other) noexcept;

  // Closes any open handle first. Throws "failed to open file." with the path as note.
  void open(const std::wstring& path, Mode mode);
  // The same, for a caller that names the file in its own words: the system's error
  // number, or 0 when the file is open.
  int tryOpen(const std::wstring& path, Mode mode);
  void close() noexcept;
  bool isOpen() const noexcept { return descriptor_ >= 0; }

  // Returns the number of bytes read; 0 at the end of the file.
  std::size_t read(void* buffer, std::size_t size);
  // Reads exactly `size` bytes unless the file ends first; returns what was read.
  std::size_t readBlock(void* buffer, std::size_t size);
  // Writes everything or throws.
  void write(const void* buffer, std::size_t size);
  void write(const std::string& text) { write(text.data(), text.size()); }
  std::int64_t seek(std::int64_t offset, Origin origin);
  std::int64_t size();
  // Pushes written data to the storage device, so that a rename after it is safe.
  void flushToDisk();

  // Pushes a folder's entries to the storage device, so that a file renamed into it
  // stays there after a power cut.
  static void flushDirectory(const std::wstring& path);

  static void createDirectory(const std::wstring& path);
  static bool exists(const std::wstring& path);
  static bool isDirectory(const std::wstring& path);
  // Removes a file; false when it could not be removed (errors are the caller's choice).
  static bool remove(const std::wstring& path) noexcept;
  // Reads a whole file; throws like open() and read(). What is not a regular file (a
  // folder, a device, a pipe) is refused before it is opened, and so is a file larger
  // than readAllLimit(): a damaged or hostile path must not make the program read
  // without end.
  static std::string readAll(const std::wstring& path);
  // Bytes that readAll() takes at most; 1 GiB unless the settings say otherwise. Any
  // thread may read it.
  static std::int64_t readAllLimit() noexcept;
  static void setReadAllLimit(std::int64_t bytes) noexcept;
  static constexpr std::int64_t kDefaultReadAllLimit = std::int64_t{1} << 30;

 private:
  int descriptor_ = -1;
};

struct DirectoryEntry {
  std::wstring path;  // directory + "/" + name, or the bare name when no directory was given
  std::uint32_t size = 0;
  std::int64_t lastWriteTime = 0;  // nanoseconds since the epoch
};

// Files matching a pattern such as "*.svj2" (the extension must be concrete), sorted by
// name. A directory that does not exist gives an empty list.
std::vector<DirectoryEntry> listFiles(const std::wstring& pattern, const std::wstring& directory);
// Directories matching a pattern such as "*", sorted by name.
std::vector<DirectoryEntry> listDirectories(const std::wstring& pattern, const std::wstring& directory);

}  // namespace System
