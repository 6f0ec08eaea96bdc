// What the parse of an AVI file finds: the video and audio stream headers it takes and
// the index of their chunks. Handed from the parse to the open file, which keeps it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Plugin {

struct AviStreams {
  struct FrameEntry {
    std::uint64_t position = 0;  // of the data, behind the chunk header
    std::uint32_t size = 0;
    std::uint8_t delta = 0;  // 1: not a key frame
  };
  struct AudioEntry {
    std::uint64_t offset = 0;  // bytes of the stream before this chunk
    std::uint64_t position = 0;
    std::uint32_t size = 0;
  };

  std::uint32_t flags = 0;  // InputFile::Video, InputFile::Audio

  std::vector<std::byte> videoFormat;  // BITMAPINFOHEADER and what follows
  std::uint32_t handler = 0;
  std::uint32_t rate = 0;
  std::uint32_t scale = 0;
  std::int32_t frameCount = 0;

  std::vector<std::byte> audioFormat;  // WAVEFORMATEX and what follows
  std::int64_t sampleCount = 0;
  std::uint32_t audioRate = 0;
  std::uint32_t audioScale = 0;
  std::uint32_t audioLength = 0;
  std::uint32_t blockAlign = 0;
  std::uint64_t indexedSamples = 0;

  std::vector<FrameEntry> frames;
  std::vector<AudioEntry> audioChunks;
};

}  // namespace Plugin
