#include "media/codec/WaveFormat.h"

#include <algorithm>
#include <cstring>

#include "media/riff/LittleEndian.h"

namespace Media {

namespace {

// Every sub-format of the extensible form that stands for a format tag is that tag in
// its first two bytes followed by these fourteen.
constexpr unsigned char kTagGuidTail[14] = {0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80,
                                            0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};
constexpr std::size_t kFieldBytes = 18;       // WAVEFORMATEX up to and with cbSize
constexpr std::size_t kExtensibleBytes = 22;  // valid bits, channel mask, sub-format

}  // namespace

std::optional<WaveFormat> WaveFormat::parse(std::span<const std::byte> bytes) {
  if (bytes.size() < 16) return std::nullopt;
  WaveFormat format;
  const std::byte* p = bytes.data();
  format.formatTag = readLe16(p);
  format.channels = readLe16(p + 2);
  format.sampleRate = readLe32(p + 4);
  format.avgBytesPerSec = readLe32(p + 8);
  format.blockAlign = readLe16(p + 12);
  format.bitsPerSample = readLe16(p + 14);
  format.codecTag = format.formatTag;
  if (bytes.size() < kFieldBytes) return format;
  // cbSize counts the bytes behind it; a damaged one cannot reach past the block.
  const std::size_t extraBytes = std::min<std::size_t>(readLe16(p + 16), bytes.size() - kFieldBytes);
  std::span<const std::byte> extra = bytes.subspan(kFieldBytes, extraBytes);
  // Behind cbSize the extensible form has the valid bits (2 bytes), the channel mask (4)
  // and the sub-format (16).
  if (format.formatTag == kExtensible && extra.size() >= kExtensibleBytes &&
      std::memcmp(extra.data() + 8, kTagGuidTail, sizeof(kTagGuidTail)) == 0) {
    format.codecTag = readLe16(extra.data() + 6);
    extra = extra.subspan(kExtensibleBytes);
  }
  format.extra.assign(extra.begin(), extra.end());
  return format;
}

WaveFormat WaveFormat::pcm16(std::uint16_t channels, std::uint32_t sampleRate) {
  WaveFormat format;
  format.formatTag = format.codecTag = kPcm;
  format.channels = channels;
  format.sampleRate = sampleRate;
  format.bitsPerSample = 16;
  format.blockAlign = static_cast<std::uint16_t>(channels * 2);
  format.avgBytesPerSec = format.blockAlign * sampleRate;
  return format;
}

}  // namespace Media
