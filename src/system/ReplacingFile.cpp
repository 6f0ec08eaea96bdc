#include "system/ReplacingFile.h"

#include <filesystem>
#include <random>
#include <system_error>

#include "system/Exception.h"
#include "system/FileName.h"
#include "system/Text.h"

namespace System {

namespace {

// A name no other writer of the same target will pick, hidden in listings of "*.ext".
std::wstring temporaryNameFor(const std::wstring& target) {
  static thread_local std::mt19937_64 generator{std::random_device{}()};
  const std::string suffix = Text::format(32, ".%016llx.saving", static_cast<unsigned long long>(generator()));
  return target + Text::fromUtf8(suffix);
}

}  // namespace

ReplacingFile::ReplacingFile(const std::wstring& path)
    : target_(FileName::expand(path)), temporary_(temporaryNameFor(target_)) {
  file_.open(temporary_, File::Mode::Write);
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
  std::filesystem::rename(Text::toUtf8(temporary_), Text::toUtf8(target_), error);
  if (error) throw PlatformCallException("rename", "System::ReplacingFile::commit", error.value());
  committed_ = true;
}

}  // namespace System
