// A decoder of one compressed audio stream to interleaved 16-bit PCM at the stream's own
// rate and channel count. Made by a CodecProvider; used by one thread at a time (the
// reader holds its file's audio lock).
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace Media {

class AudioCodec {
 public:
  virtual ~AudioCodec() = default;

  // Decodes what it can of `source` and appends the samples to `output`; returns how
  // many bytes of `source` it used. Bytes it leaves (a packet not yet whole) come again
  // at the front of the next call. A packet the decoder refuses is dropped; a failure of
  // the decoder itself throws.
  virtual std::size_t decode(std::span<const std::byte> source, std::vector<std::byte>& output) = 0;
  // Forgets what the decoder holds, before reading from another place.
  virtual void reset() = 0;
};

}  // namespace Media
