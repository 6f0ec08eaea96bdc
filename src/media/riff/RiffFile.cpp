#include "media/riff/RiffFile.h"

#include <algorithm>

#include "media/image/BitmapInfoHeader.h"
#include "media/riff/LittleEndian.h"
#include "system/Exception.h"

namespace Media {

RiffFile::RiffFile(const std::wstring& path) {
  file_.open(path, System::File::Mode::Read);
  fileSize_ = static_cast<std::uint64_t>(file_.size());
}

std::size_t RiffFile::readAt(std::uint64_t position, void* buffer, std::size_t size) {
  if (position >= fileSize_) return 0;
  file_.seek(static_cast<std::int64_t>(position), System::File::Origin::Begin);
  return file_.readBlock(buffer, size);
}

std::vector<std::byte> RiffFile::readBytes(std::uint64_t position, std::uint64_t size) {
  const std::uint64_t held = position < fileSize_ ? std::min(size, fileSize_ - position) : 0;
  std::vector<std::byte> bytes(static_cast<std::size_t>(held));
  bytes.resize(readAt(position, bytes.data(), bytes.size()));
  return bytes;
}

bool RiffFile::getRiffChunk(std::uint32_t formType, RiffChunk& outChunk) {
  std::byte header[12];
  const std::size_t got = readAt(0, header, sizeof(header));
  if (got < 8 || readLe32(header) != fourcc("RIFF")) {
    throw System::NoteException("Media::RiffFile::getRiffChunk", "invalid RIFF file.");
  }
  if (got < 12 || readLe32(header + 8) != formType) return false;
  const std::uint32_t size = readLe32(header + 4);
  outChunk.size = size >= 4 ? size - 4 : 0;
  outChunk.start = outChunk.cursor = 12;
  return true;
}

bool RiffFile::findChunk(std::uint32_t id, RiffChunk& outChunk, RiffChunk& parent) {
  while (parent.cursorInside()) {
    const std::uint64_t position = parent.cursor;
    std::byte header[12];
    const std::size_t got = readAt(position, header, sizeof(header));
    if (got < 8) return false;
    const std::uint32_t code = readLe32(header);
    const std::uint32_t size = readLe32(header + 4);
    // Children start on even positions; every step moves at least 8 bytes on.
    parent.cursor = position + 8 + size;
    parent.cursor += parent.cursor & 1;
    if (code == id) {
      outChunk.size = size;
      outChunk.start = outChunk.cursor = position + 8;
      return true;
    }
    if (code == fourcc("LIST") && got == 12 && readLe32(header + 8) == id) {
      outChunk.size = size >= 4 ? size - 4 : 0;
      outChunk.start = outChunk.cursor = position + 12;
      return true;
    }
  }
  return false;
}

}  // namespace Media
