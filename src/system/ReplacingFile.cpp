#include "system/ReplacingFile.h"

#include <filesystem>
#include <random>
#include <system_error>

#include "system/Exception.h"
#include "system/FileName.h"
#include "system/Text.h"

namespace System {

namespace {

constexpr const char* kOpenPlace = "System::ReplacingFile::ReplacingFile";

std::filesystem::path native(const std::wstring& path) { return std::filesystem::path(Text::toUtf8(path)); }

// Where a chain of symbolic links ends: the file that a save replaces, so that the links
// themselves stay. A link that points nowhere names the file that the save creates. A
// loop of links is given up after as many steps as the system itself follows.
std::wstring fileBehindLinks(const std::wstring& path) {
  constexpr int kMaxLinks = 40;
  std::filesystem::path at = native(path);
  for (int step = 0; step < kMaxLinks; ++step) {
    std::error_code error;
    if (!std::filesystem::is_symlink(at, error)) break;
    const std::filesystem::path link = std::filesystem::read_symlink(at, error);
    if (error) break;
    at = link.is_absolute() ? link : at.parent_path() / link;
  }
  return Text::fromUtf8(at.string());
}

// A name no other writer of the same target will pick, hidden in listings of "*.ext".
std::wstring temporaryNameFor(const std::wstring& target) {
  static thread_local std::mt19937_64 generator{std::random_device{}()};
  const std::string suffix = Text::format(32, ".%016llx.saving", static_cast<unsigned long long>(generator()));
  return target + Text::fromUtf8(suffix);
}

}  // namespace

ReplacingFile::ReplacingFile(const std::wstring& path)
    : target_(fileBehindLinks(FileName::expand(path))), temporary_(temporaryNameFor(target_)) {
  // The temporary file is an implementation detail: a failure names what the user asked
  // to write, and why it cannot be written.
  if (const int error = file_.tryOpen(temporary_, File::Mode::Write)) {
    throw NoteException(kOpenPlace, "failed to open file.",
                        Text::toUtf8(FileName::expand(path)) + " (" + systemMessage(error) + ")");
  }
  // Set before any content is written, so that a private file is never readable by others
  // for a moment.
  std::error_code error;
  const std::filesystem::file_status previous = std::filesystem::status(native(target_), error);
  if (!error && std::filesystem::is_regular_file(previous)) {
    std::filesystem::permissions(native(temporary_), previous.permissions(), std::filesystem::perm_options::replace,
                                 error);
    if (error) {
      file_.close();
      File::remove(temporary_);
      throw PlatformCallException("chmod", kOpenPlace, error.value());
    }
  }
}

ReplacingFile::~ReplacingFile() {
  if (committed_) return;
  file_.close();
  File::remove(temporary_);
}

void ReplacingFile::commit() {
  file_.flushToDisk();
  file_.close();
  std::error_code error;
  std::filesystem::rename(native(temporary_), native(target_), error);
  if (error) throw PlatformCallException("rename", "System::ReplacingFile::commit", error.value());
  committed_ = true;
  // The rename lives in the folder's entries, which are on disk only once the folder is.
  const std::filesystem::path folder = native(target_).parent_path();
  File::flushDirectory(Text::fromUtf8(folder.empty() ? std::string(".") : folder.string()));
}

}  // namespace System
