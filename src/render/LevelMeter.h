// The values of the player's level meter, frame by frame of mixed sound: for each side
// the displayed level, which falls 60 dB a second from a peak, the rms over the last 0.4
// seconds and a peak held for 3 seconds, all in dB between -60 and 60. Used by the player
// on the audio thread, under the player's level lock.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace Media {
class AudioBuffer;
}

namespace Render {

struct LevelRecord {
  static constexpr float kFloor = -60.0f;
  struct Channel {
    float level = kFloor;
    float rms = kFloor;
    float peakHold = kFloor;
    float unused = kFloor;  // stays at the floor
  };
  std::int32_t frame = 0;
  std::array<Channel, 2> channels;  // left, right
};

class LevelMeter {
 public:
  // Starts from silence at a frame rate of rate / scale.
  void reset(std::int32_t rate, std::int32_t scale);
  // The record of one frame's mix; a mono mix counts on both sides.
  LevelRecord measure(std::int32_t frame, const Media::AudioBuffer& mix);

 private:
  struct Side {
    float level = LevelRecord::kFloor;
    float hold = LevelRecord::kFloor;
    std::int64_t holdFrame = 0;
    std::vector<double> squares;  // mean squares of the last frames, a ring
    double sum = 0.0;
  };

  float fall_ = 2.0f;  // dB a frame
  std::int64_t holdFrames_ = 90;
  std::size_t next_ = 0;
  std::int64_t count_ = 0;  // frames measured since the reset
  std::array<Side, 2> sides_;
};

}  // namespace Render
