// One open media file as every reader hands it to the rest of the program: what it
// holds (flags, frames, size, rate, samples) and reads of decoded frames and one-second
// blocks of sound. Readers fill the fields at open and never change them after, so any
// thread may read them; reads follow the locking each reader states.
#pragma once

#include <cstdint>
#include <memory>

#include "media/Format.h"

namespace Media {
class AudioBlockBuffer;
class ImageBuffer;
}  // namespace Media

namespace Plugin {

class InputPlugin;

class InputFile {
 public:
  enum Flag : std::uint32_t { Video = 1, Audio = 2, MultiTrack = 4, OwnTimeToFrame = 8 };

  virtual ~InputFile() = default;

  // Frame `frame`, or empty when it cannot be read. The base throws "not implement.".
  virtual std::shared_ptr<Media::ImageBuffer> readVideo(std::int32_t frame);
  // Second `block` of the sound at the file's rate, or empty. The base throws.
  virtual std::shared_ptr<Media::AudioBlockBuffer> readAudio(std::int32_t block);
  // The frame shown at `seconds`: rate * seconds / scale rounded to nearest, halves away
  // from zero, within 0 .. frameCount - 1.
  virtual std::int32_t timeToFrame(double seconds) const;

  bool hasVideo() const noexcept { return (flags & Video) != 0; }
  bool hasAudio() const noexcept { return (flags & Audio) != 0; }

  InputPlugin* plugin = nullptr;  // the reader that accepted the file; set by the input service
  std::uint32_t flags = 0;
  std::int32_t frameCount = 0;
  Media::Format pixelFormat = Media::Format::Unknown;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint32_t rate = 0;
  std::uint32_t scale = 0;
  std::uint32_t videoTrackCount = 0;
  std::int64_t sampleCount = 0;
  std::uint32_t sampleFormat = 0;  // 1 integer PCM, 3 float
  std::uint32_t sampleBits = 0;
  std::uint32_t channels = 0;
  std::uint32_t sampleRate = 0;
  std::uint32_t audioTrackCount = 0;
};

}  // namespace Plugin
