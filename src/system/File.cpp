#include "system/File.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <system_error>

#include "system/Exception.h"
#include "system/FileName.h"
#include "system/Text.h"

namespace System {

namespace {

std::atomic<std::int64_t> readAllLimitBytes{File::kDefaultReadAllLimit};

// Paths are bytes on this system; the program's wide paths are stored as UTF-8 there.
std::filesystem::path nativePath(const std::wstring& path) { return std::filesystem::path(Text::toUtf8(FileName::expand(path))); }

// Only "*" and "*.ext" style patterns are used by the program: a star matches any run
// of characters, everything else matches itself.
bool matchesPattern(std::wstring_view name, std::wstring_view pattern) {
  std::size_t n = 0, p = 0, starPattern = std::wstring_view::npos, starName = 0;
  while (n < name.size()) {
    if (p < pattern.size() && (pattern[p] == L'?' || pattern[p] == name[n])) {
      ++n, ++p;
    } else if (p < pattern.size() && pattern[p] == L'*') {
      starPattern = p++, starName = n;
    } else if (starPattern != std::wstring_view::npos) {
      p = starPattern + 1, n = ++starName;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == L'*') ++p;
  return p == pattern.size();
}

std::vector<DirectoryEntry> list(const std::wstring& pattern, const std::wstring& directory, bool wantDirectories) {
  std::vector<DirectoryEntry> entries;
  const std::wstring expandedDirectory = FileName::expand(directory);
  const std::filesystem::path folder = expandedDirectory.empty() ? std::filesystem::path(".") : nativePath(expandedDirectory);
  const std::wstring namePattern = FileName::fileName(FileName::expand(pattern));
  std::error_code error;
  std::filesystem::directory_iterator it(folder, error);
  if (error) return entries;
  for (; it != std::filesystem::directory_iterator(); it.increment(error)) {
    if (error) break;
    std::error_code statusError;
    const bool isDirectory = it->is_directory(statusError);
    if (statusError || isDirectory != wantDirectories) continue;
    const std::wstring name = Text::fromUtf8(it->path().filename().string());
    if (!matchesPattern(name, namePattern)) continue;
    DirectoryEntry entry;
    entry.path = expandedDirectory.empty() ? name : expandedDirectory + L"/" + name;
    if (!wantDirectories) entry.size = static_cast<std::uint32_t>(it->file_size(statusError) & 0xFFFFFFFFu);
    const auto written = it->last_write_time(statusError);
    if (!statusError) {
      entry.lastWriteTime =
          std::chrono::duration_cast<std::chrono::nanoseconds>(
              std::chrono::file_clock::to_sys(written).time_since_epoch())
              .count();
    }
    entries.push_back(std::move(entry));
  }
  // Log rotation and registration orders rely on ascending name order.
  std::sort(entries.begin(), entries.end(),
            [](const DirectoryEntry& a, const DirectoryEntry& b) { return a.path < b.path; });
  return entries;
}

}  // namespace

void File::createDirectory(const std::wstring& path) {
  std::error_code error;
  std::filesystem::create_directories(nativePath(path), error);
  if (error) throw PlatformCallException("mkdir", "System::File::createDirectory", error.value());
}

bool File::exists(const std::wstring& path) {
  std::error_code error;
  return std::filesystem::exists(nativePath(path), error);
}

bool File::isDirectory(const std::wstring& path) {
  std::error_code error;
  return std::filesystem::is_directory(nativePath(path), error);
}

bool File::remove(const std::wstring& path) noexcept {
  try {
    std::error_code error;
    return std::filesystem::remove(nativePath(path), error) && !error;
  } catch (const std::exception&) {
    return false;
  }
}

std::int64_t File::readAllLimit() noexcept { return readAllLimitBytes.load(std::memory_order_relaxed); }

void File::setReadAllLimit(std::int64_t bytes) noexcept { readAllLimitBytes.store(bytes, std::memory_order_relaxed); }

std::string File::readAll(const std::wstring& path) {
  constexpr const char* kPlace = "System::File::readAll";
  const std::int64_t limit = readAllLimit();
  const auto tooLarge = [&](std::int64_t size) {
    return NoteException(kPlace, "file is larger than the read limit.",
                         Text::toUtf8(path) + Text::format(96, " (%lld bytes; the limit is %lld)",
                                                           static_cast<long long>(size), static_cast<long long>(limit)));
  };
  // Looked at before opening: opening a pipe waits for a writer.
  std::error_code error;
  const std::filesystem::path native(Text::toUtf8(path));
  const std::filesystem::file_status status = std::filesystem::status(native, error);
  if (!error && !std::filesystem::is_regular_file(status)) {
    throw NoteException(kPlace, "not a regular file.", Text::toUtf8(path));
  }
  const std::uintmax_t size = error ? 0 : std::filesystem::file_size(native, error);
  if (!error && size > static_cast<std::uintmax_t>(limit)) throw tooLarge(static_cast<std::int64_t>(size));

  File file;
  file.open(path, Mode::Read);
  std::string content;
  char buffer[65536];
  for (std::size_t got = file.read(buffer, sizeof(buffer)); got > 0; got = file.read(buffer, sizeof(buffer))) {
    // A file that grows while it is read is held to the same limit.
    if (static_cast<std::int64_t>(content.size() + got) > limit) {
      throw tooLarge(static_cast<std::int64_t>(content.size() + got));
    }
    content.append(buffer, got);
  }
  return content;
}

std::vector<DirectoryEntry> listFiles(const std::wstring& pattern, const std::wstring& directory) {
  // A file pattern needs a concrete extension: "*.svj2", never "*" or "*.*".
  const std::wstring extension = FileName::extension(pattern);
  if (extension.empty() || extension[0] == L'*') return {};
  std::vector<DirectoryEntry> entries = list(pattern, directory, false);
  // Compare extension lengths too, so that "*.svj2" never yields "x.svj2bak".
  std::erase_if(entries, [&](const DirectoryEntry& entry) {
    return FileName::extension(entry.path).size() != extension.size();
  });
  return entries;
}

std::vector<DirectoryEntry> listDirectories(const std::wstring& pattern, const std::wstring& directory) {
  return list(pattern, directory, true);
}

}  // namespace System
