#include "media/audio/AudioBlockBuffer.h"

#include <algorithm>
#include <cstring>

#include "system/Log.h"

namespace Media {

namespace {

constexpr float kScale16 = 1.0f / 32768.0f;
constexpr float kScale32 = 1.0f / 2147483648.0f;

float pcm16(const std::byte* p) noexcept {
  const auto value = static_cast<std::int16_t>(static_cast<std::uint16_t>(p[0]) |
                                               static_cast<std::uint16_t>(static_cast<std::uint16_t>(p[1]) << 8));
  return static_cast<float>(value) * kScale16;
}

// A 3-byte little-endian value in the top 24 bits of a signed 32-bit integer: the sign
// comes for free, and the low byte being zero keeps the conversion to float exact.
float pcm24(const std::byte* p) noexcept {
  const std::uint32_t bits = static_cast<std::uint32_t>(p[0]) << 8 | static_cast<std::uint32_t>(p[1]) << 16 |
                             static_cast<std::uint32_t>(p[2]) << 24;
  return static_cast<float>(static_cast<std::int32_t>(bits)) * kScale32;
}

float float32(const std::byte* p) noexcept {
  float value;
  std::memcpy(&value, p, sizeof(value));
  return value;
}

constexpr std::size_t kGroup = 8;

// One call a block, so that the sample loop is a plain loop the compiler can vectorise.
using BlockReader = void (*)(const std::byte* bytes, std::uint32_t count, float* left, float* right);

// Whole groups of eight frames are gathered in locals before they are stored: the bytes
// may alias anything, and the compiler vectorises a group only when it can see that they
// don't. The frames after the last whole group go one by one, since the bytes end there.
// A mono source (Channels 1) writes each value to both channels.
template <float (*Read)(const std::byte*), std::size_t Bytes, std::size_t Channels>
void readFrames(const std::byte* bytes, std::uint32_t count, float* left, float* right) {
  constexpr std::size_t kFrame = Bytes * Channels;
  const std::size_t whole = count / kGroup * kGroup;
  for (std::size_t g = 0; g < whole; g += kGroup) {
    float l[kGroup];
    float r[kGroup];
    for (std::size_t j = 0; j < kGroup; ++j) {
      l[j] = Read(bytes + (g + j) * kFrame);
      r[j] = Channels == 2 ? Read(bytes + (g + j) * kFrame + Bytes) : l[j];
    }
    std::memcpy(left + g, l, sizeof(l));
    std::memcpy(right + g, r, sizeof(r));
  }
  for (std::size_t i = whole; i < count; ++i) {
    left[i] = Read(bytes + i * kFrame);
    right[i] = Channels == 2 ? Read(bytes + i * kFrame + Bytes) : left[i];
  }
}

void copyFloat(const std::byte* bytes, std::uint32_t count, float* left, float*) {
  std::memcpy(left, bytes, std::size_t{count} * sizeof(float));
}

struct BlockForm {
  SampleFormat format;
  std::uint32_t bits;
  std::uint32_t channels;
  std::uint32_t bufferChannels;  // mono integers become stereo, mono float stays mono
  BlockReader read;
};

constexpr BlockForm kBlockForms[] = {
    {SampleFormat::Float, 32, 2, 2, readFrames<float32, 4, 2>},
    {SampleFormat::Float, 32, 1, 1, copyFloat},
    {SampleFormat::Pcm, 16, 2, 2, readFrames<pcm16, 2, 2>},
    {SampleFormat::Pcm, 16, 1, 2, readFrames<pcm16, 2, 1>},
    {SampleFormat::Pcm, 24, 2, 2, readFrames<pcm24, 3, 2>},
    {SampleFormat::Pcm, 24, 1, 2, readFrames<pcm24, 3, 1>},
};

}  // namespace

AudioBlockBuffer::AudioBlockBuffer(const AudioSampleData& data) {
  const auto form = std::find_if(std::begin(kBlockForms), std::end(kBlockForms), [&](const BlockForm& f) {
    return f.format == data.sampleFormat && f.bits == data.sampleBits && f.channels == data.channels;
  });
  if (form == std::end(kBlockForms)) {
    System::Log::warn("Media::AudioBlockBuffer::AudioBlockBuffer",
                      "can not convert audio data. format=%d bit=%d channel=%d",
                      static_cast<int>(data.sampleFormat), static_cast<int>(data.sampleBits),
                      static_cast<int>(data.channels));
    allocate(0, 2);
    return;
  }
  // A partial frame at the end is dropped.
  const auto count = static_cast<std::uint32_t>(data.bytes.size() / (std::size_t{form->bits / 8} * form->channels));
  allocate(count, form->bufferChannels);
  form->read(data.bytes.data(), count, channelData(0), channelData(1));
}

}  // namespace Media
