#include "render/LevelMeter.h"

#include <algorithm>
#include <cmath>

#include "media/audio/AudioBuffer.h"

namespace Render {

namespace {

float decibels(double amplitude) {
  if (amplitude <= 0.0) return LevelRecord::kFloor;
  return static_cast<float>(std::clamp(20.0 * std::log10(amplitude), -60.0, 60.0));
}

}  // namespace

void LevelMeter::reset(std::int32_t rate, std::int32_t scale) {
  const double framesPerSecond = scale > 0 ? static_cast<double>(rate) / scale : 30.0;
  const double fps = std::max(1.0, std::round(framesPerSecond));
  fall_ = static_cast<float>(60.0 / fps);
  holdFrames_ = std::max<std::int64_t>(1, std::llround(framesPerSecond * 3.0));
  const auto window = static_cast<std::size_t>(std::max<std::int64_t>(1, std::llround(framesPerSecond * 0.4)));
  for (Side& side : sides_) side = Side{LevelRecord::kFloor, LevelRecord::kFloor, 0, std::vector<double>(window, 0.0), 0.0};
  next_ = 0;
  count_ = 0;
}

LevelRecord LevelMeter::measure(std::int32_t frame, const Media::AudioBuffer& mix) {
  if (sides_[0].squares.empty()) reset(30, 1);
  LevelRecord record;
  record.frame = frame;
  const std::uint32_t n = mix.sampleCount();
  for (std::size_t c = 0; c < 2; ++c) {
    Side& side = sides_[c];
    const float* samples = mix.channelData(static_cast<std::uint32_t>(c));
    // Only the positive swing counts for the peak, as the meter always showed it.
    float peak = 0.0f;
    double squares = 0.0;
    for (std::uint32_t i = 0; i < n; ++i) {
      peak = std::max(peak, samples[i]);
      squares += static_cast<double>(samples[i]) * samples[i];
    }
    const double meanSquare = n == 0 || squares == 0.0 ? 0.0 : squares / n;
    side.level = std::max(side.level - fall_, decibels(peak));
    if (count_ - side.holdFrame > holdFrames_ || side.level > side.hold) {
      side.hold = side.level;
      side.holdFrame = count_;
    }
    side.sum += meanSquare - side.squares[next_];
    side.squares[next_] = meanSquare;
    // The running sum drifts by rounding; it is never let below zero.
    if (side.sum < 1e-30) side.sum = 0.0;
    record.channels[c].level = side.level;
    record.channels[c].rms = decibels(std::sqrt(side.sum / static_cast<double>(side.squares.size())));
    record.channels[c].peakHold = side.hold;
  }
  next_ = (next_ + 1) % sides_[0].squares.size();
  ++count_;
  return record;
}

}  // namespace Render
