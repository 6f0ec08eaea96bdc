// What the sound filters share: a block they may change in place. A block may still be
// held elsewhere (a buffer another object hands on), and a mono block has one channel
// for both sides, so a filter that treats the sides apart first takes its own stereo copy.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>

#include "media/audio/AudioBuffer.h"

namespace Effect {

inline std::shared_ptr<Media::AudioBuffer> ownStereoBlock(std::shared_ptr<Media::AudioBuffer> block) {
  if (block.use_count() == 1 && block->channels() == 2) return block;
  auto own = std::make_shared<Media::AudioBuffer>(block->sampleCount(), 2);
  const std::size_t bytes = std::size_t{block->sampleCount()} * sizeof(float);
  for (std::uint32_t channel = 0; channel < 2; ++channel) {
    if (bytes != 0) std::memcpy(own->channelData(channel), block->channelData(channel), bytes);
  }
  return own;
}

}  // namespace Effect
