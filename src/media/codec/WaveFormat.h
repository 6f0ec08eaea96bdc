// The format block of a sound stream (WAVEFORMATEX and what follows it), as WAV and AVI
// files hold it. The extensible form is read through to the code of its sub-format, so
// that its PCM and float data count as plain PCM and float.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace Media {

struct WaveFormat {
  static constexpr std::uint16_t kPcm = 1;
  static constexpr std::uint16_t kIeeeFloat = 3;
  static constexpr std::uint16_t kExtensible = 0xFFFE;

  // The fields of a block of at least 16 bytes; empty for a shorter one.
  static std::optional<WaveFormat> parse(std::span<const std::byte> bytes);
  // 16-bit PCM with these channels and rate, as decoders hand their samples.
  static WaveFormat pcm16(std::uint16_t channels, std::uint32_t sampleRate);

  bool isPcmOrFloat() const noexcept { return codecTag == kPcm || codecTag == kIeeeFloat; }

  std::uint16_t formatTag = 0;  // as written
  std::uint16_t channels = 0;
  std::uint32_t sampleRate = 0;
  std::uint32_t avgBytesPerSec = 0;
  std::uint16_t blockAlign = 0;
  std::uint16_t bitsPerSample = 0;
  // What the data is: the format tag, or the tag that an extensible form's sub-format
  // stands for.
  std::uint16_t codecTag = 0;
  // The decoder's own bytes behind the fields (coefficients, samples per block, ...).
  std::vector<std::byte> extra;
};

}  // namespace Media
