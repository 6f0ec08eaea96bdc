// Writes a file so that it is replaced whole or not at all: the content goes to a
// temporary file in the same folder, is flushed to disk, and only then renamed over
// the target. A writer that fails or is dropped before commit() leaves the previous
// file exactly as it was. Used by every writer of the user's files. One thread at a time.
#pragma once

#include <string>

#include "system/File.h"

namespace System {

class ReplacingFile {
 public:
  // Creates the temporary file beside `path` (variables expanded); throws like File::open.
  explicit ReplacingFile(const std::wstring& path);
  // Removes the temporary file when commit() did not run.
  ~ReplacingFile();
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  File& file() noexcept { return file_; }
  void write(const std::string& text) { file_.write(text); }

  // Flushes, closes and renames over the target. Throws, leaving the target untouched,
  // when any of it fails.
  void commit();

 private:
  std::wstring target_;
  std::wstring temporary_;
  File file_;
  bool committed_ = false;
};

}  // namespace System
