// The sound output the player feeds: float stereo buffers handed over in order, played
// as they come, with the number still queued reported exactly. The program's is on SDL
// (src/platform/sdl_audio); tests may stand in their own. Main thread only, except where
// an implementation says otherwise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Render {

class AudioOutputDevice {
 public:
  virtual ~AudioOutputDevice() = default;

  // Makes the output ready for interleaved float stereo at `sampleRate`; an output at
  // another rate is reopened. False when there is no sound device: nothing exists then,
  // and everything else does nothing.
  virtual bool createPlayer(std::uint32_t sampleRate) = 0;
  virtual bool exists() const = 0;
  // Starts and pauses playing what is queued; a paused output keeps its queue.
  virtual void play() = 0;
  virtual void stop() = 0;
  virtual bool started() const = 0;
  // Percent, clamped to 0 .. 100.
  virtual void setVolume(std::int32_t percent) = 0;
  // Queues one buffer of whole sample frames (8 bytes each).
  virtual void submitBuffer(std::vector<std::byte> buffer) = 0;
  // Lets go of the buffers played to the end and returns how many are still queued.
  virtual std::uint32_t reap() = 0;
  // Bytes of the buffers still queued.
  virtual std::uint64_t submittedBytes() const = 0;
  // Drops everything queued.
  virtual void clearBuffer() = 0;
};

}  // namespace Render
