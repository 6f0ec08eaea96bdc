// Where a read of sound at the timeline's rate and a clip's speed lies in its source. The
// range read starts from this arithmetic, and the cache asks ahead for exactly the blocks
// it gives, so that what is loaded ahead is what the read then fetches. Plain functions:
// any thread.
#pragma once

#include <cstdint>

namespace Cache {

// Positions are counted in units: one sample of the source is `positionRate` units.
struct AudioReadPosition {
  std::int64_t step = 0;   // units of the source that one sample of the read takes
  std::int64_t pos = 0;    // where the read starts, in units
  std::int64_t whole = 0;  // the source sample it starts in: pos / positionRate
  std::int64_t frac = 0;   // and the units into that sample: pos % positionRate
  std::int64_t block = 0;  // the one-second block of that sample: whole / sourceRate
  std::int64_t index = 0;  // and its place there: whole % sourceRate
  bool reversed = false;   // the span is read forward, then turned round
};

// `position` is a sample number at `positionRate` samples a second; the source has
// `sourceRate`. A non-zero `startSeconds` moves the start by that much of the source,
// never before its first sample. A negative speed reads the span of its magnitude.
AudioReadPosition audioReadPosition(std::int64_t sourceRate, std::int64_t position, std::int32_t positionRate,
                                    double startSeconds, double speed);

struct AudioBlockSpan {
  std::int64_t first = 0;
  std::int64_t last = -1;
  bool empty() const noexcept { return last < first; }
};

// The blocks that hold the source samples a read of `count` samples uses: one to one at
// the source's own pace, the pair around each sample when slower (so the sample after
// the last one too), and every sample overlapped when faster. Empty for a read of
// nothing: no samples, no speed, no rate, or a span wholly before the source.
AudioBlockSpan audioBlocksTouched(std::int64_t sourceRate, std::int64_t position, std::int32_t positionRate,
                                  std::int32_t count, double startSeconds, double speed);

}  // namespace Cache
