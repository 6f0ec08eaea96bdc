// Writes an AVI file of one video and one audio stream, frame by frame: the frame's
// bitmap, then its samples. Past a size limit per RIFF (0x7E000000 bytes) the file goes
// on in further RIFFs with OpenDML indexes; every close, also after a cancel or a
// failure upstream, leaves headers and indexes that describe exactly what was written.
// The space of the indexes and the extended header is reserved at the start, so nothing
// written ever moves. One thread.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "media/Format.h"

namespace System {
class File;
}

namespace Plugin {

struct AviStreamFormat {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  Media::Format videoFormat = Media::Format::Bgrx8Unorm;  // 88, 87, 107, 11 or 10
  std::uint32_t rate = 30;   // frames per second: rate / scale
  std::uint32_t scale = 1;
  std::uint32_t sampleRate = 48000;
  std::uint16_t audioTag = 1;  // 1 integer PCM, 3 float
  std::uint16_t audioBits = 16;
  std::uint16_t channels = 2;
};

class AviFileWriter {
 public:
  // Where a RIFF ends and the next begins: a RIFF may not pass 2 GiB, and this leaves
  // room for a last frame and the indexes.
  static constexpr std::uint64_t kRiffLimit = 0x7E000000;
  // RIFFs a super index can list.
  static constexpr std::uint32_t kMostRiffs = 100;

  // Writes the head into `file`, an empty file open for writing. `riffLimit` is for
  // tests that need several RIFFs without gigabytes.
  AviFileWriter(System::File& file, const AviStreamFormat& format, std::uint64_t riffLimit = kRiffLimit);
  AviFileWriter(const AviFileWriter&) = delete;
  AviFileWriter& operator=(const AviFileWriter&) = delete;

  // One frame's bitmap, as its header says the image lies, then the frame's samples
  // (interleaved, `sampleCount` of them). An empty frame or no samples writes no chunk.
  // A 100th RIFF throws "exceeded super index entry max.".
  void writeFrame(std::span<const std::byte> bitmap, std::span<const std::byte> samples, std::uint32_t sampleCount);
  // Closes the last RIFF and writes the final headers; the file stays open.
  void finish();

  std::uint64_t totalFrames() const noexcept { return totalFrames_; }
  std::uint64_t totalSamples() const noexcept { return totalSamples_; }

 private:
  static constexpr std::uint32_t kSuperIndexBytes = 1624;
  static constexpr std::uint32_t kOdmlBytes = 260;

  struct Entry {
    std::uint64_t position = 0;  // of the chunk's header
    std::uint32_t size = 0;
    std::uint16_t stream = 0;
  };
  struct SuperIndex {
    std::uint64_t position = 0;  // of its chunk's header
    std::uint32_t chunkId = 0;
    std::vector<std::array<std::uint64_t, 3>> entries;  // offset, size, duration
  };

  std::uint64_t position();
  void seekTo(std::uint64_t position);
  void writeBytes(const void* data, std::size_t size);
  // A chunk with its pad byte; returns the position of its header.
  std::uint64_t writeChunk(std::uint32_t id, std::span<const std::byte> data);
  // "LIST" or "RIFF" with size 0 and its type; returns the position of its header.
  std::uint64_t openList(std::uint32_t id, std::uint32_t type);
  void closeList(std::uint64_t header);
  void writeJunkPadding();
  void patch32(std::uint64_t position, std::uint32_t value);
  void writeStandardIndex(std::uint16_t stream, SuperIndex& super);
  void writeSuperIndex(const SuperIndex& super);
  void writeLegacyIndex();
  void changeRiff();
  void closeRiff();

  System::File& file_;
  AviStreamFormat format_;
  std::uint64_t riffLimit_;
  std::uint64_t position_ = 0;
  std::uint64_t riff_ = 0;  // header of the present RIFF
  std::uint64_t movi_ = 0;  // header of its movi list
  std::uint64_t avih_ = 0;
  std::uint64_t videoStrh_ = 0;
  std::uint64_t audioStrh_ = 0;
  std::uint64_t odml_ = 0;
  SuperIndex videoIndex_;
  SuperIndex audioIndex_;
  std::uint32_t riffCount_ = 0;  // RIFFs closed before the present one
  std::uint64_t framesAtRiff_ = 0;
  std::uint64_t samplesAtRiff_ = 0;
  bool extended_ = false;
  bool finished_ = false;
  std::uint64_t totalFrames_ = 0;
  std::uint64_t totalSamples_ = 0;
  std::uint32_t largestVideo_ = 0;
  std::uint32_t largestAudio_ = 0;
  std::vector<Entry> entries_;
};

}  // namespace Plugin
