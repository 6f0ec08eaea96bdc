// The one-second block that readers hand over, against the conversion table: the exact
// ends of each integer scale, which inputs become stereo, and what is refused.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "media/audio/AudioBlockBuffer.h"
#include "support/LogLines.h"
#include "support/MediaFiles.h"

namespace {

using Media::AudioBlockBuffer;
using Media::SampleFormat;
using PluginTest::le16;
using PluginTest::le32;

AudioBlockBuffer block(const std::string& bytes, SampleFormat format, std::uint32_t bits, std::uint32_t channels) {
  return AudioBlockBuffer(Media::AudioSampleData{std::as_bytes(std::span(bytes.data(), bytes.size())), format, 48000,
                                                 bits, channels});
}

std::string float32(float value) {
  std::string bytes(4, '\0');
  std::memcpy(bytes.data(), &value, 4);
  return bytes;
}

TEST(AudioBlockBuffer, IntegerSamplesScaleToOneAtFullScaleAndMonoBecomesStereo) {
  const AudioBlockBuffer stereo16 = block(le16(0x8000) + le16(0x7FFF) + le16(1) + le16(0) + "x", SampleFormat::Pcm, 16, 2);
  ASSERT_EQ(stereo16.sampleCount(), 2u);
  EXPECT_EQ(stereo16.channels(), 2u);
  EXPECT_EQ(stereo16.channelData(0)[0], -1.0f);
  EXPECT_EQ(stereo16.channelData(1)[0], 32767.0f / 32768.0f);
  EXPECT_EQ(stereo16.channelData(0)[1], 1.0f / 32768.0f);

  const AudioBlockBuffer mono16 = block(le16(0xC000) + le16(0x2000), SampleFormat::Pcm, 16, 1);
  ASSERT_EQ(mono16.channels(), 2u);
  EXPECT_EQ(mono16.channelData(0)[0], -0.5f);
  EXPECT_EQ(mono16.channelData(1)[0], -0.5f);
  EXPECT_EQ(mono16.channelData(1)[1], 0.25f);

  const AudioBlockBuffer stereo24 =
      block(le32(0x800000).substr(0, 3) + le32(0x7FFFFF).substr(0, 3), SampleFormat::Pcm, 24, 2);
  ASSERT_EQ(stereo24.sampleCount(), 1u);
  EXPECT_EQ(stereo24.channelData(0)[0], -1.0f);
  EXPECT_EQ(stereo24.channelData(1)[0], 8388607.0f / 8388608.0f);

  const AudioBlockBuffer mono24 = block(le32(0x000001).substr(0, 3), SampleFormat::Pcm, 24, 1);
  ASSERT_EQ(mono24.channels(), 2u);
  EXPECT_EQ(mono24.channelData(1)[0], 1.0f / 8388608.0f);
}

TEST(AudioBlockBuffer, FloatSamplesStayAsTheyAreAndMonoStaysMono) {
  const AudioBlockBuffer stereo = block(float32(1.5f) + float32(-0.25f), SampleFormat::Float, 32, 2);
  ASSERT_EQ(stereo.sampleCount(), 1u);
  EXPECT_EQ(stereo.channelData(0)[0], 1.5f);
  EXPECT_EQ(stereo.channelData(1)[0], -0.25f);

  const AudioBlockBuffer mono = block(float32(0.75f) + float32(-3.0f), SampleFormat::Float, 32, 1);
  ASSERT_EQ(mono.sampleCount(), 2u);
  EXPECT_EQ(mono.channels(), 1u);
  EXPECT_EQ(mono.channelData(1)[1], -3.0f);
}

// Eleven frames: a whole group of eight, read together, and three read one by one.
TEST(AudioBlockBuffer, FramesInAGroupOfEightAndAfterItLandInTheirPlaces) {
  for (const std::uint32_t bits : {16u, 24u}) {
    for (const std::uint32_t channels : {1u, 2u}) {
      std::string bytes;
      for (std::int32_t i = 0; i < 11 * static_cast<std::int32_t>(channels); ++i) {
        bytes += le32(static_cast<std::uint32_t>((i * 1000 - 7000) * (bits == 24 ? 256 : 1))).substr(0, bits / 8);
      }
      const AudioBlockBuffer read = block(bytes, SampleFormat::Pcm, bits, channels);
      ASSERT_EQ(read.sampleCount(), 11u);
      for (std::uint32_t i = 0; i < 11; ++i) {
        const float first = static_cast<float>(static_cast<std::int32_t>(i * channels) * 1000 - 7000) / 32768.0f;
        const float second = channels == 2 ? first + 1000.0f / 32768.0f : first;
        EXPECT_EQ(read.channelData(0)[i], first) << bits << " bits, " << channels << " channels, frame " << i;
        EXPECT_EQ(read.channelData(1)[i], second) << bits << " bits, " << channels << " channels, frame " << i;
      }
    }
  }
}

TEST(AudioBlockBuffer, FormsOutsideTheTableGiveAnEmptyStereoBlockAndAWarning) {
  const std::string bytes(24, '\x10');
  for (const auto& [format, bits, channels] : {std::tuple{SampleFormat::Pcm, 8u, 1u}, {SampleFormat::Pcm, 32u, 2u},
                                               {SampleFormat::Pcm, 16u, 3u}, {SampleFormat::Float, 64u, 1u},
                                               {SampleFormat::Float, 16u, 2u}, {SampleFormat::Pcm, 16u, 0u}}) {
    PluginTest::LogLines log;
    const AudioBlockBuffer refused = block(bytes, format, bits, channels);
    EXPECT_TRUE(refused.empty());
    EXPECT_EQ(refused.channels(), 2u);
    EXPECT_TRUE(log.contains("WARN Media::AudioBlockBuffer::AudioBlockBuffer: can not convert audio data. format=" +
                             std::to_string(static_cast<int>(format)) + " bit=" + std::to_string(bits) +
                             " channel=" + std::to_string(channels)));
  }
}

}  // namespace
