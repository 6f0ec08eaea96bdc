// A place in a RIFF file: a chunk's payload and the cursor of the next child to look at.
// Positions are 64-bit so that no size in a damaged header can wrap a cursor round.
#pragma once

#include <cstdint>

namespace Media {

struct RiffChunk {
  std::uint64_t size = 0;    // of the payload
  std::uint64_t start = 0;   // file position of the payload
  std::uint64_t cursor = 0;  // file position of the next child

  bool inside(std::uint64_t position) const noexcept { return position >= start && position - start < size; }
  bool cursorInside() const noexcept { return inside(cursor); }
  std::uint64_t end() const noexcept { return start + size; }
  void rewind() noexcept { cursor = start; }
};

}  // namespace Media
