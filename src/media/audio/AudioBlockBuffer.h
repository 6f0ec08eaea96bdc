// One second of sound as a reader or a scene hands it over: its sample count is the
// source's sample rate. Made from the interleaved bytes a file holds.
#pragma once

#include <cstdint>
#include <span>

#include "media/audio/AudioBuffer.h"
#include "media/audio/SampleFormat.h"

namespace Media {

// The raw input of a block: interleaved little-endian samples as they lie in a file.
struct AudioSampleData {
  std::span<const std::byte> bytes;
  SampleFormat sampleFormat = SampleFormat::Pcm;
  std::uint32_t sampleRate = 0;
  std::uint32_t sampleBits = 0;
  std::uint32_t channels = 0;
};

class AudioBlockBuffer : public AudioBuffer {
 public:
  // 32-bit float stays as it is (mono float stays mono); 16- and 24-bit integers are
  // scaled to 1.0 full scale (−32768 and 0x800000 become −1.0 exactly), and mono
  // integers become stereo. Any other combination logs a warning and gives an empty
  // stereo block. The bytes are only read during the call.
  explicit AudioBlockBuffer(const AudioSampleData& data);
  // A block that its maker fills, such as a second of a scene's mix; not cleared.
  AudioBlockBuffer(std::uint32_t sampleCount, std::uint32_t channels) : AudioBuffer(sampleCount, channels) {}
};

}  // namespace Media
