#include "media/audio/AudioBlockBuffer.h"

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

// A 3-byte little-endian value in the top 24 bits of a signed 32-bit integer.
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

}  // namespace

AudioBlockBuffer::AudioBlockBuffer(const AudioSampleData& data) {
  const std::byte* bytes = data.bytes.data();
  const std::size_t size = data.bytes.size();
  const std::uint32_t channels = data.channels;
  const auto fill = [&](std::uint32_t bytesPerSample, auto read) {
    const auto count = static_cast<std::uint32_t>(size / (std::size_t{bytesPerSample} * channels));
    float* left = channelData(0);
    float* right = channelData(1);
    for (std::uint32_t i = 0; i < count; ++i) {
      const std::byte* frame = bytes + std::size_t{i} * bytesPerSample * channels;
      left[i] = read(frame);
      right[i] = channels == 2 ? read(frame + bytesPerSample) : left[i];
    }
  };
  const auto sized = [&](std::uint32_t bytesPerSample, std::uint32_t bufferChannels) {
    allocate(static_cast<std::uint32_t>(size / (std::size_t{bytesPerSample} * channels)), bufferChannels);
  };
  if (data.sampleFormat == SampleFormat::Float && data.sampleBits == 32 && (channels == 1 || channels == 2)) {
    sized(4, channels);
    fill(4, float32);
  } else if (data.sampleFormat == SampleFormat::Pcm && data.sampleBits == 16 && (channels == 1 || channels == 2)) {
    sized(2, 2);
    fill(2, pcm16);
  } else if (data.sampleFormat == SampleFormat::Pcm && data.sampleBits == 24 && (channels == 1 || channels == 2)) {
    sized(3, 2);
    fill(3, pcm24);
  } else {
    System::Log::warn("Media::AudioBlockBuffer::AudioBlockBuffer",
                      "can not convert audio data. format=%d bit=%d channel=%d",
                      static_cast<int>(data.sampleFormat), static_cast<int>(data.sampleBits), static_cast<int>(channels));
    allocate(0, 2);
  }
}

}  // namespace Media
