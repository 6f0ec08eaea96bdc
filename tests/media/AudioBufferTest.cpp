// Planar float buffers: the ranges that copyFrom and clearFrom keep to, and convertTo at
// the ends of its rounding and clamping, with every 16-bit value through a block and back.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "media/audio/AudioBlockBuffer.h"
#include "media/audio/RawAudioBuffer.h"
#include "system/Exception.h"

namespace {

using Media::AudioBuffer;
using Media::RawAudioBuffer;
using Media::SampleFormat;

AudioBuffer stereo(const std::vector<float>& left, const std::vector<float>& right) {
  AudioBuffer buffer(static_cast<std::uint32_t>(left.size()), 2);
  std::memcpy(buffer.channelData(0), left.data(), left.size() * sizeof(float));
  std::memcpy(buffer.channelData(1), right.data(), right.size() * sizeof(float));
  return buffer;
}

std::vector<float> samples(const AudioBuffer& buffer, std::uint32_t channel) {
  return {buffer.channelData(channel), buffer.channelData(channel) + buffer.sampleCount()};
}

template <typename T>
std::vector<T> converted(const AudioBuffer& buffer, SampleFormat format, std::uint32_t bits, std::uint32_t channels) {
  RawAudioBuffer raw{{}, 7, 0, format, bits, channels};
  buffer.convertTo(raw);
  EXPECT_EQ(raw.bytes.size(), std::size_t{raw.sampleCount} * raw.blockBytes);
  EXPECT_EQ(raw.bytes.capacity() % 64, 0u);
  std::vector<T> values(raw.bytes.size() / sizeof(T));
  std::memcpy(values.data(), raw.bytes.data(), raw.bytes.size());
  return values;
}

TEST(AudioBuffer, CopyFromAndClearFromKeepToTheRoomThereIs) {
  const AudioBuffer source = stereo({1, 2, 3, 4, 5}, {-1, -2, -3, -4, -5});
  AudioBuffer target(4, 2);
  target.clear();
  EXPECT_EQ(target.copyFrom(2, source, 1, 5), 4u);  // four asked for, two fit
  EXPECT_EQ(target.copyFrom(1, source, 4, 2), 1u);
  EXPECT_EQ(target.copyFrom(0, source, 4, 100), 1u);  // the source's end bounds it too
  EXPECT_EQ(samples(target, 0), (std::vector<float>{5, 0, 2, 3}));
  target.clearFrom(4);
  target.clearFrom(1000);
  target.clearFrom(3);
  EXPECT_EQ(samples(target.clone(), 1), (std::vector<float>{-5, 0, -2, 0}));

  // A mono target takes the first channel, and answers for its second with it.
  AudioBuffer mono(3, 1);
  EXPECT_EQ(mono.copyFrom(0, source, 0, 3), 3u);
  EXPECT_EQ(samples(mono, 1), (std::vector<float>{1, 2, 3}));
}

TEST(AudioBuffer, ConvertToRoundsHalvesToEvenClampsAndSumsForMono) {
  constexpr float kStep = 1.0f / 32768.0f;
  const AudioBuffer buffer = stereo({1.0f, 0.5f * kStep, 1.5f * kStep, 2.5f * kStep, 9.0f},
                                    {-1.0f, 32767.5f * kStep, -1.5f * kStep, -0.7f * kStep, -9.0f});
  EXPECT_EQ(converted<std::int16_t>(buffer, SampleFormat::Pcm, 16, 2),
            (std::vector<std::int16_t>{32767, -32768, 0, 32767, 2, -2, 2, -1, 32767, -32768}));
  EXPECT_EQ(converted<float>(stereo({0.25f, 1.5f}, {0.5f, -2.0f}), SampleFormat::Float, 32, 2),
            (std::vector<float>{0.25f, 0.5f, 1.5f, -2.0f}));
  EXPECT_EQ(converted<float>(stereo({0.25f, 1.5f}, {0.5f, -2.0f}), SampleFormat::Float, 32, 1),
            (std::vector<float>{0.75f, -0.5f}));
  // A mono buffer's right is its left: twice the level.
  AudioBuffer mono(1, 1);
  mono.channelData(0)[0] = -0.75f;
  EXPECT_EQ(converted<float>(mono, SampleFormat::Float, 32, 1), (std::vector<float>{-1.5f}));
}

TEST(AudioBuffer, ConvertToRefusesOtherFormsAndLeavesTheTargetAsItWas) {
  RawAudioBuffer raw{{}, 7, 0, SampleFormat::Pcm, 24, 2};
  try {
    stereo({0.5f}, {0.5f}).convertTo(raw);
    ADD_FAILURE() << "no exception";
  } catch (const System::NoteException& e) {
    EXPECT_EQ(e.message(), "audio format not supported.");
    EXPECT_NE(e.text().find("format = 1, bit = 24, ch = 2"), std::string::npos);
    EXPECT_NE(e.text().find("Media::AudioBuffer::convertTo()"), std::string::npos);
  }
  EXPECT_EQ(raw.sampleCount, 7u);
  EXPECT_EQ(raw.bytes.capacity(), 0u);
}

TEST(AudioBuffer, EverySixteenBitValueSurvivesABlockAndBack) {
  std::vector<std::int16_t> pcm(65536 * 2);
  for (std::size_t i = 0; i < 65536; ++i) {
    pcm[2 * i] = static_cast<std::int16_t>(i - 32768);
    pcm[2 * i + 1] = static_cast<std::int16_t>(32767 - i);
  }
  const Media::AudioBlockBuffer block(
      Media::AudioSampleData{std::as_bytes(std::span(pcm)), SampleFormat::Pcm, 48000, 16, 2});
  EXPECT_EQ(converted<std::int16_t>(block, SampleFormat::Pcm, 16, 2), pcm);
}

}  // namespace
