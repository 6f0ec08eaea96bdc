// The parse of an AVI 1.0 or OpenDML AVI 2 file: the first video and the first audio
// stream it can take, and the index of their chunks from the AVI 2 indexes, "idx1", or
// a walk over "movi" when neither exists. Runs on the thread that opens the file, with a
// handle of its own that it closes when done.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "media/riff/RiffChunk.h"
#include "media/riff/RiffFile.h"
#include "plugin/AviStreams.h"

namespace Plugin {

class AviFileParse {
 public:
  // Throws "invalid RIFF file.", "AVI chunk not found.", "hdrl chunk not found." or
  // "movi chunk not found." for a file that is no AVI. Index entries whose data the
  // file does not hold are cut to what it holds.
  static AviStreams parse(const std::wstring& path);

 private:
  explicit AviFileParse(const std::wstring& path) : file_(path) {}
  void open();
  void readStream(std::uint8_t number);
  // The stream's "strf" into `format`; false without one, or with one of 64 KiB or more,
  // which is logged under `place`.
  bool readStreamFormat(const char* place, std::vector<std::byte>& format);
  bool readVideoStream(const std::byte* streamHeader);
  bool readAudioStream(const std::byte* streamHeader);
  std::uint64_t readSuperIndex();
  void readAvi2Indexes();
  void readAvi1Index(const Media::RiffChunk& idx1);
  void scanMovi();
  void addFrame(std::uint64_t position, std::uint32_t size, bool delta);
  void addAudio(std::uint64_t position, std::uint32_t size);
  std::size_t reservable(std::uint64_t wanted, std::uint64_t bytesPerEntry) const;
  void checkCounts();

  Media::RiffFile file_;
  Media::RiffChunk riff_;
  Media::RiffChunk hdrl_;
  Media::RiffChunk strl_;
  Media::RiffChunk movi_;
  std::vector<std::uint64_t> superIndex_;
  std::uint16_t videoId_ = 0;  // "00", "01", ... as the two low bytes of a chunk id
  std::uint16_t audioId_ = 0;
  bool hasVideoId_ = false;
  bool hasAudioId_ = false;
  std::uint64_t videoCapacity_ = 0;
  std::uint64_t audioCapacity_ = 0;
  std::uint64_t audioBytes_ = 0;
  bool openDml_ = false;
  AviStreams streams_;
};

}  // namespace Plugin
