// An open AVI file: frames decoded from the nearest key frame (one frame when reads go
// in order) and one-second blocks of its sound. Video and audio have a handle, a lock
// and scratch of their own, so one thread may read frames while another reads sound,
// and files never wait for each other.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "media/codec/AudioDecompressor.h"
#include "media/codec/VideoDecompressor.h"
#include "media/riff/RiffFile.h"
#include "plugin/AviStreams.h"
#include "plugin/InputFile.h"

namespace Media {
class CodecProvider;
}

namespace Plugin {

class AviFileInput : public InputFile {
 public:
  // Sets up the streams of a parse; a stream that cannot be read loses its flag. The
  // file is of use when `flags` keeps video or audio.
  AviFileInput(const std::wstring& path, AviStreams streams, Media::CodecProvider& codecs);

  std::shared_ptr<Media::ImageBuffer> readVideo(std::int32_t frame) override;
  std::shared_ptr<Media::AudioBlockBuffer> readAudio(std::int32_t block) override;

 private:
  bool setupVideo(const std::wstring& path, Media::CodecProvider& codecs);
  bool setupAudio(const std::wstring& path, Media::CodecProvider& codecs);
  // Reads the chunk of `entry` into the video scratch; returns its bytes.
  std::span<const std::byte> readFrameChunk(std::size_t entry);
  // Brings decoded picture `entry` into the decompressor's output: from the pictures
  // held, by going on from the last chunk decoded, or from the key frame at or before
  // it. False when no picture has been decoded at all.
  bool decodePicture(std::size_t entry);
  void feed(std::size_t entry);
  // Bytes of the stream in a second, by its header.
  std::uint64_t bytesPerSecond() const;
  std::size_t fillFromCodec(std::int32_t block, std::uint64_t position, std::span<std::byte> room);
  std::size_t fillUncompressed(std::uint64_t position, std::span<std::byte> room);

  AviStreams streams_;
  std::unique_ptr<Media::RiffFile> videoFile_;
  std::unique_ptr<Media::RiffFile> audioFile_;
  Media::VideoDecompressor video_;
  Media::AudioDecompressor audio_;

  std::mutex videoMutex_;
  std::vector<std::byte> videoScratch_;
  std::int64_t nextFrame_ = -256;  // the chunk the decoder takes next, when reads go in order

  std::mutex audioMutex_;
  std::int64_t lastBlock_ = -256;
  std::size_t audioChunk_ = 0;  // the next entry of the audio index to read
};

}  // namespace Plugin
