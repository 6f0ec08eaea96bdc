// Sound of a source read at the timeline's rate and a clip's speed: one sample to one at
// the source's own pace, linear interpolation when slower, the average of what each
// sample covers when faster, and turned round for a negative speed. The blocks come from
// the caller, one second each, so the arithmetic is testable apart from the cache.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "cache/AudioReadPosition.h"

namespace Media {
class AudioBuffer;
}

namespace Cache {

// Block `block` of the source, or nothing past its end.
using AudioBlockFetch = std::function<std::shared_ptr<const Media::AudioBuffer>(std::int64_t block)>;

// Fills `out`, already sized, from `at` (see audioReadPosition) of a source of
// `sourceRate` samples a second. Without a first block `out` is silent; a later block
// that is missing ends the read, and what was not read stays silent.
void readAudioSpan(Media::AudioBuffer& out, std::int64_t sourceRate, std::int32_t positionRate,
                   const AudioReadPosition& at, const AudioBlockFetch& fetch);

}  // namespace Cache
