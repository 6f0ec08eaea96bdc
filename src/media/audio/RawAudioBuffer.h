// Interleaved sound on its way out of the program (exports, the output cache): what
// AudioBuffer::convertTo writes. The caller chooses the form by setting blockBytes,
// sampleFormat, sampleBits and channels; the conversion sets sampleCount and the bytes.
#pragma once

#include <cstdint>

#include "media/audio/SampleFormat.h"
#include "system/DataBuffer.h"

namespace Media {

struct RawAudioBuffer {
  // Used size sampleCount × blockBytes. The capacity runs on to a multiple of 64 bytes
  // that holds whole groups of eight sample frames; what lies past the used size is no
  // part of the sound.
  System::DataBuffer bytes;
  std::uint32_t sampleCount = 0;
  std::uint32_t blockBytes = 0;  // bytes of one sample frame, all channels
  SampleFormat sampleFormat = SampleFormat::Pcm;
  std::uint32_t sampleBits = 0;
  std::uint32_t channels = 0;
};

}  // namespace Media
