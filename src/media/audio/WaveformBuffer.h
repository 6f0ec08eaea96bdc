// The waveform of one media file as the timeline draws it: per second of sound, 128
// columns, each a pair of bytes (minimum, maximum) on a scale where 128 is silence, 0 is
// −1.0 and 255 is +1.0. Read as 16-bit little-endian values, a column has its maximum in
// the high byte and its minimum in the low one. Made by the cache's waveform loader one
// block at a time on its worker; read-only once it is in the cache.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Media {

class AudioBuffer;

// Entry 2k is the minimum and 2k + 1 the maximum of column k.
using WaveformData = std::vector<std::uint8_t>;

class WaveformBuffer {
 public:
  static constexpr std::uint32_t kColumnsPerBlock = 128;
  static constexpr std::size_t kBytesPerBlock = 2 * kColumnsPerBlock;

  // `byteCount` zeroed bytes; the loader asks for 256 a one-second block.
  explicit WaveformBuffer(std::size_t byteCount) : data_(byteCount, 0) {}

  // Writes the 128 columns of the one-second block `block` (bytes 256 × block onwards).
  // A block past the end of the table, or a negative one, writes nothing; an empty
  // buffer zeroes its columns.
  void writeBlock(std::int32_t block, const AudioBuffer& audio) noexcept;

  const WaveformData& data() const noexcept { return data_; }
  std::size_t size() const noexcept { return data_.size(); }

 private:
  WaveformData data_;
};

}  // namespace Media
