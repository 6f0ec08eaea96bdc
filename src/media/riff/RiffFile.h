// A read handle on a RIFF file (AVI, WAV) that finds chunks by their codes, for the
// readers' parses and their reads of frames and blocks. Owned and used by one thread at
// a time, like the file under it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "media/riff/RiffChunk.h"
#include "system/File.h"

namespace Media {

class RiffFile {
 public:
  // Throws "failed to open file." with the path.
  explicit RiffFile(const std::wstring& path);

  // The top chunk: throws "invalid RIFF file." when the file does not start with "RIFF";
  // false when its form is not `formType`.
  bool getRiffChunk(std::uint32_t formType, RiffChunk& outChunk);
  // The next child of `parent` named `id`, or a LIST of that type, from parent's cursor
  // on; the cursor moves past every child looked at. A LIST of another type is not
  // entered. False at the end of the parent or of the file.
  bool findChunk(std::uint32_t id, RiffChunk& outChunk, RiffChunk& parent);

  // Up to `size` bytes at `position`; returns what the file held there.
  std::size_t readAt(std::uint64_t position, void* buffer, std::size_t size);
  // `size` bytes at `position`, or as many of them as the file holds: a size in a
  // damaged header never allocates more than the file.
  std::vector<std::byte> readBytes(std::uint64_t position, std::uint64_t size);
  std::uint64_t fileSize() const noexcept { return fileSize_; }

 private:
  System::File file_;
  std::uint64_t fileSize_ = 0;
};

}  // namespace Media
