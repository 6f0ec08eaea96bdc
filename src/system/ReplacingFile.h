// Writes a file so that it is replaced whole or not at all: the content goes to a
// temporary file in the same folder, is flushed to disk, and only then renamed over
// the target, and the folder is flushed after it. A writer that fails or is dropped
// before commit() leaves the previous file exactly as it was. What the user set on the
// file stays: a symbolic link stays a link and the file it points to is replaced, and
// the new file takes the old one's permission bits. Used by every writer of the user's
// files. One thread at a time.
#pragma once

#include <string>

#include "system/File.h"

namespace System {

class ReplacingFile {
 public:
  // Creates the temporary file beside the file that `path` (variables expanded) stands
  // for. Throws "failed to open file." naming `path` and the system's reason.
  explicit ReplacingFile(const std::wstring& path);
  // Removes the temporary file when commit() did not run.
  ~ReplacingFile();
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  File& file() noexcept { return file_; }
  void write(const std::string& text) { file_.write(text); }

  // Flushes, closes and renames over the target, then flushes the folder. Throws,
  // leaving the target untouched, when the rename did not happen; a folder that cannot
  // be flushed after it throws too, since the new file may then not survive a power cut.
  void commit();

 private:
  std::wstring target_;  // where the chain of links from the given path ends
  std::wstring temporary_;
  File file_;
  bool committed_ = false;
};

}  // namespace System
