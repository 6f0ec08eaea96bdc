#include "cache/AudioReadPosition.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Cache {

AudioReadPosition audioReadPosition(std::int64_t sourceRate, std::int64_t position, std::int32_t positionRate,
                                    double startSeconds, double speed) {
  AudioReadPosition read;
  if (sourceRate <= 0 || positionRate <= 0) return read;
  const std::int64_t s = sourceRate;
  const std::int64_t r = positionRate;
  // At normal speed the step is exact, whatever rounding would make of s * 1.0.
  read.step = speed == 1.0 ? s : std::llabs(std::llround(static_cast<double>(s) * speed));
  read.pos = read.step * position;
  if (startSeconds != 0.0) {
    const std::int64_t start = std::llround(static_cast<double>(r * s) * startSeconds);
    read.pos = std::max<std::int64_t>(0, start + read.step * position);
  }
  read.whole = read.pos / r;
  read.frac = read.pos % r;
  read.block = read.whole / s;
  read.index = read.whole % s;
  read.reversed = speed < 0.0;
  return read;
}

AudioBlockSpan audioBlocksTouched(std::int64_t sourceRate, std::int64_t position, std::int32_t positionRate,
                                  std::int32_t count, double startSeconds, double speed) {
  const AudioReadPosition read = audioReadPosition(sourceRate, position, positionRate, startSeconds, speed);
  if (count <= 0 || read.step == 0) return {};
  const std::int64_t r = positionRate;
  // The last source sample the read uses.
  std::int64_t last;
  if (read.step == r) {
    last = read.whole + count - 1;
  } else if (read.step < r) {
    // Each sample lies between two of the source; the last one needs the one after it.
    last = (read.pos + read.step * (count - 1)) / r + 1;
  } else {
    // Each sample averages the source samples its `step` units overlap.
    last = (read.pos + read.step * count - 1) / r;
  }
  if (last < 0) return {};
  return {std::max<std::int64_t>(read.whole, 0) / sourceRate, last / sourceRate};
}

}  // namespace Cache
