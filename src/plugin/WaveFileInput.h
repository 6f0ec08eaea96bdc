// An open RIFF WAVE file: one-second blocks of its sound, PCM and float as they lie,
// other formats through a decoder. Reads hold the file's own lock, so files never wait
// for each other.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "media/codec/AudioDecompressor.h"
#include "media/riff/RiffFile.h"
#include "plugin/InputFile.h"

namespace Media {
class CodecProvider;
}

namespace Plugin {

class WaveFileInput : public InputFile {
 public:
  // Parses the file and sets up its sound. Throws "invalid RIFF file.", "WAVE chunk not
  // found.", "fmt chunk not found." or "data chunk not found." for a file that is no
  // WAV; a format that cannot be read leaves the audio flag clear.
  WaveFileInput(const std::wstring& path, Media::CodecProvider& codecs);

  std::shared_ptr<Media::AudioBlockBuffer> readAudio(std::int32_t block) override;

 private:
  bool parse(Media::WaveFormat& format);
  // Bytes of decoded output that `sourceBytes` of the file make, by its bytes a second.
  std::size_t outputBytesOf(std::uint64_t sourceBytes) const;
  std::size_t fillFromCodec(std::int32_t block, std::uint64_t position, std::span<std::byte> room);

  Media::RiffFile file_;
  Media::AudioDecompressor audio_;
  std::uint64_t dataPosition_ = 0;
  std::uint64_t dataSize_ = 0;  // what the file holds of the data chunk
  std::uint64_t avgBytes_ = 0;  // of the file's format
  std::uint32_t blockAlign_ = 0;

  std::mutex audioMutex_;
  std::int64_t lastBlock_ = -256;
  std::uint64_t nextPosition_ = 0;  // of the data the decoder takes next, when reads go in order
};

}  // namespace Plugin
