// The WAV reader over files written byte by byte here: the sample forms that reach a
// block, sound past the data, IMA ADPCM made by libavcodec in the test, and files that
// are not what they claim.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "media/audio/AudioBlockBuffer.h"
#include "plugin/InputFile.h"
#include "plugin/WaveFileReader.h"
#include "support/FfmpegEncode.h"
#include "support/LogLines.h"
#include "support/MediaFiles.h"
#include "support/SoundMatch.h"
#include "support/TempDirectory.h"

namespace {

using PluginTest::le16;
using PluginTest::le32;

std::string float32(float value) {
  std::uint32_t bits;
  std::memcpy(&bits, &value, sizeof(bits));
  return le32(bits);
}

std::string pcm24(std::uint32_t value) { return le32(value).substr(0, 3); }

class WaveFileReaderTest : public ::testing::Test {
 protected:
  std::shared_ptr<Plugin::InputFile> open(const std::string& bytes) {
    return reader_.open(directory_.writeFile("sound.wav", bytes).wstring(), 0);
  }

  TestSupport::TempDirectory directory_;
  Plugin::WaveFileReader reader_;
};

TEST_F(WaveFileReaderTest, PcmAndFloatSamplesReachTheBlockAsTheyAre) {
  const auto stereo16 = open(PluginTest::makeWav(PluginTest::waveFormat(1, 2, 4, 16),
                                                 le16(0x8000) + le16(0x7FFF) + le16(0x4000) + le16(0xC000)));
  ASSERT_TRUE(stereo16);
  EXPECT_EQ(stereo16->flags, Plugin::InputFile::Audio);
  EXPECT_EQ(stereo16->sampleCount, 2);
  EXPECT_EQ(stereo16->sampleFormat, 1u);
  EXPECT_EQ(stereo16->sampleBits, 16u);
  EXPECT_EQ(stereo16->channels, 2u);
  EXPECT_EQ(stereo16->sampleRate, 4u);
  const auto block16 = stereo16->readAudio(0);
  ASSERT_EQ(block16->sampleCount(), 4u);
  EXPECT_EQ(block16->channelData(0)[0], -1.0f);
  EXPECT_EQ(block16->channelData(1)[0], 32767 / 32768.0f);
  EXPECT_EQ(block16->channelData(0)[1], 0.5f);
  EXPECT_EQ(block16->channelData(1)[1], -0.5f);

  const auto mono24 = open(PluginTest::makeWav(PluginTest::waveFormat(1, 1, 2, 24), pcm24(0x800000) + pcm24(0x400000)));
  ASSERT_TRUE(mono24);
  const auto block24 = mono24->readAudio(0);
  EXPECT_EQ(block24->channels(), 2u);
  EXPECT_EQ(block24->channelData(1)[0], -1.0f);
  EXPECT_EQ(block24->channelData(0)[1], 0.5f);

  const auto monoFloat = open(PluginTest::makeWav(PluginTest::waveFormat(3, 1, 2, 32), float32(0.25f) + float32(-2.0f)));
  ASSERT_TRUE(monoFloat);
  EXPECT_EQ(monoFloat->sampleFormat, 3u);
  const auto blockFloat = monoFloat->readAudio(0);
  EXPECT_EQ(blockFloat->channels(), 1u);
  EXPECT_EQ(blockFloat->channelData(0)[0], 0.25f);
  EXPECT_EQ(blockFloat->channelData(1)[1], -2.0f);

  // The extensible form of 24-bit PCM is plain PCM.
  const std::string pcmGuid("\x01\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 16);
  const auto extensible = open(PluginTest::makeWav(
      PluginTest::waveFormat(0xFFFE, 1, 2, 24, le16(24) + le32(4) + pcmGuid), pcm24(0x400000) + pcm24(0)));
  ASSERT_TRUE(extensible);
  EXPECT_EQ(extensible->sampleFormat, 1u);
  EXPECT_EQ(extensible->readAudio(0)->channelData(0)[0], 0.5f);

  // Blocks have no form for 8-bit PCM or 64-bit float.
  EXPECT_FALSE(open(PluginTest::makeWav(PluginTest::waveFormat(1, 1, 8, 8), "\x80\x80")));
  EXPECT_FALSE(open(PluginTest::makeWav(PluginTest::waveFormat(3, 1, 2, 64), std::string(16, '\0'))));
}

TEST_F(WaveFileReaderTest, BlocksPastTheDataAreSilentAndACutRecordingReadsWhatItHas) {
  std::string data;
  for (int k = 0; k < 15; ++k) data += le16(static_cast<std::uint16_t>(k + 1));
  // The data chunk says 100 samples; the file holds 15.
  const auto file = open(PluginTest::makeWav(PluginTest::waveFormat(1, 1, 10, 16), data, 200));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->sampleCount, 15);
  const auto second = file->readAudio(1);
  ASSERT_EQ(second->sampleCount(), 10u);
  EXPECT_EQ(second->channelData(0)[4], 15 / 32768.0f);
  EXPECT_EQ(second->channelData(0)[5], 0.0f);
  for (const std::int32_t block : {2, 1000, -3}) {
    const auto silent = file->readAudio(block);
    ASSERT_EQ(silent->sampleCount(), 10u);
    EXPECT_EQ(silent->channelData(1)[9], 0.0f);
  }

  // PCM counts in whole frames, whatever the header says of its block size and bytes a
  // second.
  const auto damaged = open(PluginTest::makeWav(PluginTest::waveFormat(1, 1, 10, 16, 3, 80, std::nullopt), data));
  ASSERT_TRUE(damaged);
  EXPECT_EQ(damaged->sampleCount, 15);
  EXPECT_EQ(damaged->readAudio(1)->channelData(0)[4], 15 / 32768.0f);
}

TEST_F(WaveFileReaderTest, ImaAdpcmDecodesThroughLibavcodecWithinAFewPercent) {
  constexpr int kRate = 8000;
  const std::vector<double> source = PluginTest::sine(440, kRate, 3);
  const PluginTest::EncodedSound stream = PluginTest::encodeSound("adpcm_ima_wav", source, kRate);
  const auto avgBytes = static_cast<std::uint32_t>(std::int64_t{kRate} * stream.blockAlign / stream.samplesPerBlock);
  const auto file = open(PluginTest::makeWav(
      PluginTest::waveFormat(0x11, 1, kRate, 4, static_cast<std::uint16_t>(stream.blockAlign), avgBytes,
                             le16(static_cast<std::uint16_t>(stream.samplesPerBlock))),
      stream.data));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->sampleFormat, 1u);
  EXPECT_EQ(file->sampleBits, 16u);
  EXPECT_EQ(file->channels, 1u);
  EXPECT_EQ(file->sampleRate, static_cast<std::uint32_t>(kRate));
  EXPECT_NEAR(static_cast<double>(file->sampleCount), source.size(), stream.samplesPerBlock);

  // In order, then a jump back to the middle, which may drift by a few samples.
  PluginTest::expectBlocksFollow(*file, source, {{0, 0}, {1, 0}, {2, 0}, {1, 6}});
}

TEST_F(WaveFileReaderTest, Mp3DecodesThroughLibavcodecAtItsLevelAndPitch) {
  if (!PluginTest::hasEncoder("libmp3lame")) GTEST_SKIP() << "this libavcodec has no MP3 encoder";
  constexpr int kRate = 44100;
  const std::vector<double> source = PluginTest::sine(441, kRate, 3);
  const PluginTest::EncodedSound stream = PluginTest::encodeSound("libmp3lame", source, kRate);
  // MPEGLAYER3WAVEFORMAT: no bits a sample, one byte a block, and the layer's own fields.
  const std::string layer3 = le16(1) + le32(2) + le16(417) + le16(1) + le16(1393);
  const auto file = open(PluginTest::makeWav(
      PluginTest::waveFormat(0x55, 1, kRate, 0, 1, static_cast<std::uint32_t>(stream.bitRate / 8), layer3), stream.data));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->sampleBits, 16u);
  EXPECT_NEAR(static_cast<double>(file->sampleCount), source.size(), kRate / 10);
  // The encoder and decoder delay the sound by some hundred samples: what counts is
  // that a second holds the sine at its level, 441 cycles of it.
  for (const std::int32_t block : {1, 0, 1}) {
    const auto read = file->readAudio(block);
    ASSERT_EQ(read->sampleCount(), static_cast<std::uint32_t>(kRate));
    double energy = 0;
    int crossings = 0;
    for (int i = 2000; i < kRate; ++i) {
      energy += read->channelData(0)[i] * read->channelData(0)[i];
      crossings += (read->channelData(0)[i - 1] < 0) != (read->channelData(0)[i] < 0);
    }
    EXPECT_NEAR(std::sqrt(energy / (kRate - 2000)), 0.5 / std::sqrt(2.0), 0.02) << "block " << block;
    EXPECT_NEAR(crossings, 2 * 441 * (kRate - 2000) / kRate, 4) << "block " << block;
  }
}

TEST_F(WaveFileReaderTest, FilesThatAreNoWavOrStateNoPlayableSoundAreRefused) {
  const struct {
    std::string bytes;
    const char* message;
  } messages[] = {
      {"", "invalid RIFF file. in "},
      {std::string("RIFF\x04\0\0\0AVI ", 12), "WAVE chunk not found. in "},
      {std::string("RIFF\x0c\0\0\0WAVEdata\0\0\0\0", 20), "fmt chunk not found. in "},
      {std::string("RIFF\x1c\0\0\0WAVEfmt \x10\0\0\0", 20) + PluginTest::waveFormat(1, 1, 8, 16),
       "data chunk not found. in "},
      {PluginTest::makeWav(PluginTest::waveFormat(1, 1, 8, 16, std::string(0x10000, '\0')), "ab"),
       "INFO Plugin::WaveFileReader::WavFileInput::FileParse::open: invalid wav fmt size."},
  };
  for (const auto& test : messages) {
    PluginTest::LogLines log;
    EXPECT_FALSE(open(test.bytes)) << test.message;
    EXPECT_TRUE(log.mentions(test.message)) << test.message;
  }

  const std::string data(64, '\x01');
  for (const std::string& format : std::vector<std::string>{
           PluginTest::waveFormat(1, 0, 8, 16),               // no channels
           PluginTest::waveFormat(1, 3, 8, 16),               // more than a block holds
           PluginTest::waveFormat(1, 1, 0, 16),               // no rate
           PluginTest::waveFormat(1, 2, 0xFFFFFFFF, 16),      // a rate no second could hold
           PluginTest::waveFormat(1, 1, 8, 0, 0, 0, {}),      // nothing to count samples by
           PluginTest::waveFormat(0x1234, 1, 8, 16),          // no decoder
           PluginTest::waveFormat(1, 1, 8, 16).substr(0, 14),     // a format cut short
       }) {
    EXPECT_FALSE(open(PluginTest::makeWav(format, data)));
  }

  // Every cut of a file opens or is refused, and whatever opened reads.
  const std::string whole = PluginTest::makeWav(PluginTest::waveFormat(1, 2, 8, 16), data);
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    if (const auto file = open(whole.substr(0, length))) file->readAudio(0);
  }
}

}  // namespace
