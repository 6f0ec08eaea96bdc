#include "media/audio/AudioBuffer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

#include "media/audio/RawAudioBuffer.h"
#include "system/Exception.h"

namespace Media {

namespace {

// Interleaved output is written with the host's byte order; the formats are little-endian.
static_assert(std::endian::native == std::endian::little);

constexpr std::size_t kAlignment = 32;
constexpr std::size_t kGroup = 8;  // samples of one 32-byte step

std::size_t paddedSamples(std::uint32_t sampleCount) noexcept {
  return std::max<std::size_t>((std::size_t{sampleCount} + kGroup - 1) / kGroup * kGroup, kGroup);
}

// 1.0 is 32768 before the clamp, so +1.0 comes out as 32767 and −1.0 as −32768 exactly.
// Adding and taking away 1.5 × 2^23 rounds to a whole number, ties to even, in plain float
// arithmetic the compiler vectorises; |x| ≤ 32768 keeps the trick exact. The clamp comes
// first and its bounds are whole, so it is the same as clamping after rounding; its
// order sends NaN to 32767 rather than into an undefined conversion.
std::int16_t toPcm16(float sample) noexcept {
  constexpr float kRound = 12582912.0f;
  float x = sample * 32768.0f;
  x = x < 32767.0f ? x : 32767.0f;
  x = x > -32768.0f ? x : -32768.0f;
  x = (x + kRound) - kRound;
  return static_cast<std::int16_t>(static_cast<std::int32_t>(x));
}

// Each writer takes whole groups of eight sample frames: the last group may read the
// channels' padding and write past the used size, into the room the capacity keeps.
using GroupWriter = void (*)(const float* left, const float* right, std::size_t groups, std::uint8_t* out);

// A frame is built as one 32-bit word, left in the low half: shifts and ors vectorise
// where interleaving 16-bit lanes costs a chain of shuffles.
void writePcm16Stereo(const float* left, const float* right, std::size_t groups, std::uint8_t* out) {
  for (std::size_t g = 0; g < groups; ++g) {
    std::uint32_t frames[kGroup];
    for (std::size_t j = 0; j < kGroup; ++j) {
      frames[j] = static_cast<std::uint16_t>(toPcm16(left[g * kGroup + j])) |
                  static_cast<std::uint32_t>(static_cast<std::uint16_t>(toPcm16(right[g * kGroup + j]))) << 16;
    }
    std::memcpy(out + g * sizeof(frames), frames, sizeof(frames));
  }
}

void writeFloatStereo(const float* left, const float* right, std::size_t groups, std::uint8_t* out) {
  for (std::size_t g = 0; g < groups; ++g) {
    float frames[kGroup * 2];
    for (std::size_t j = 0; j < kGroup; ++j) {
      frames[2 * j] = left[g * kGroup + j];
      frames[2 * j + 1] = right[g * kGroup + j];
    }
    std::memcpy(out + g * sizeof(frames), frames, sizeof(frames));
  }
}

// No halving: a mono buffer, whose right is its left, comes out at twice its level.
void writeFloatSum(const float* left, const float* right, std::size_t groups, std::uint8_t* out) {
  for (std::size_t g = 0; g < groups; ++g) {
    float frames[kGroup];
    for (std::size_t j = 0; j < kGroup; ++j) frames[j] = left[g * kGroup + j] + right[g * kGroup + j];
    std::memcpy(out + g * sizeof(frames), frames, sizeof(frames));
  }
}

struct RawForm {
  SampleFormat format;
  std::uint32_t bits;
  std::uint32_t channels;
  std::uint32_t blockBytes;
  GroupWriter write;
};

constexpr RawForm kRawForms[] = {
    {SampleFormat::Pcm, 16, 2, 4, writePcm16Stereo},
    {SampleFormat::Float, 32, 2, 8, writeFloatStereo},
    {SampleFormat::Float, 32, 1, 4, writeFloatSum},
};

}  // namespace

void AudioBuffer::AlignedDelete::operator()(float* p) const noexcept {
  ::operator delete[](p, std::align_val_t{kAlignment});
}

AudioBuffer::Channel AudioBuffer::makeChannel(std::uint32_t sampleCount) {
  const std::size_t samples = paddedSamples(sampleCount);
  Channel channel(static_cast<float*>(::operator new[](samples * sizeof(float), std::align_val_t{kAlignment})));
  // The padding stays silent, whatever loop of eight reads it.
  std::memset(channel.get() + sampleCount, 0, (samples - sampleCount) * sizeof(float));
  return channel;
}

std::size_t AudioBuffer::paddedCount() const noexcept { return left_ ? paddedSamples(sampleCount_) : 0; }

void AudioBuffer::allocate(std::uint32_t sampleCount, std::uint32_t channels) {
  left_ = makeChannel(sampleCount);
  right_ = channels == 2 ? makeChannel(sampleCount) : nullptr;
  channels_ = channels == 2 ? 2 : 1;
  sampleCount_ = sampleCount;
}

void AudioBuffer::clear() noexcept {
  if (left_) std::memset(left_.get(), 0, paddedCount() * sizeof(float));
  if (right_) std::memset(right_.get(), 0, paddedCount() * sizeof(float));
}

void AudioBuffer::clearFrom(std::uint32_t offset) noexcept {
  if (offset >= sampleCount_) return;
  const std::size_t bytes = (paddedCount() - offset) * sizeof(float);
  std::memset(left_.get() + offset, 0, bytes);
  if (right_) std::memset(right_.get() + offset, 0, bytes);
}

AudioBuffer AudioBuffer::clone() const {
  AudioBuffer copy;
  if (!left_) return copy;
  copy.allocate(sampleCount_, channels_);
  const std::size_t bytes = paddedCount() * sizeof(float);
  std::memcpy(copy.left_.get(), left_.get(), bytes);
  if (right_) std::memcpy(copy.right_.get(), right_.get(), bytes);
  return copy;
}

std::uint32_t AudioBuffer::copyFrom(std::uint32_t dstOffset, const AudioBuffer& src, std::uint32_t srcStart,
                                    std::uint32_t srcEnd) noexcept {
  srcEnd = std::min(srcEnd, src.sampleCount_);
  if (srcEnd <= srcStart || dstOffset >= sampleCount_) return dstOffset;
  const std::uint32_t count = std::min(srcEnd - srcStart, sampleCount_ - dstOffset);
  const std::size_t bytes = std::size_t{count} * sizeof(float);
  // memmove: a buffer may copy within itself.
  std::memmove(left_.get() + dstOffset, src.channelData(0) + srcStart, bytes);
  if (right_) std::memmove(right_.get() + dstOffset, src.channelData(1) + srcStart, bytes);
  return dstOffset + count;
}

void AudioBuffer::convertTo(RawAudioBuffer& raw) const {
  const auto form = std::find_if(std::begin(kRawForms), std::end(kRawForms), [&](const RawForm& f) {
    return f.format == raw.sampleFormat && f.bits == raw.sampleBits && f.channels == raw.channels;
  });
  if (form == std::end(kRawForms)) {
    throw System::NoteException("Media::AudioBuffer::convertTo", "audio format not supported.",
                                L"format = %d, bit = %d, ch = %d", static_cast<int>(raw.sampleFormat),
                                static_cast<int>(raw.sampleBits), static_cast<int>(raw.channels));
  }
  const std::size_t groups = (std::size_t{sampleCount_} + kGroup - 1) / kGroup;
  const std::size_t room = (groups * kGroup * form->blockBytes + 63) / 64 * 64;
  // Sized to the room first, then down to the used size: DataBuffer keeps the capacity.
  raw.bytes.allocMemory(room);
  raw.bytes.allocMemory(std::size_t{sampleCount_} * form->blockBytes);
  raw.sampleCount = sampleCount_;
  raw.blockBytes = form->blockBytes;
  if (groups > 0) form->write(channelData(0), channelData(1), groups, raw.bytes.data());
}

}  // namespace Media
