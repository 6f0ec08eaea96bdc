// The AVI reader over files written byte by byte here: each index form and what it
// finds, the repairs of counts the index cannot back, how a decoder is driven for reads
// in order and for jumps, sound blocks, and files that are not what they claim.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "media/audio/AudioBlockBuffer.h"
#include "media/image/ImageBuffer.h"
#include "plugin/AviFileReader.h"
#include "plugin/InputFile.h"
#include "support/FakeCodecs.h"
#include "support/FfmpegEncode.h"
#include "support/LogLines.h"
#include "support/MediaFiles.h"
#include "support/SoundMatch.h"
#include "support/TempDirectory.h"

namespace {

using Media::Format;
using PluginTest::AviChunk;
using PluginTest::AviIndex;
using PluginTest::AviContent;

constexpr std::uint32_t kWidth = 3;
constexpr std::uint32_t kHeight = 2;

// Frame `index` of a 3x2 bitmap of 32 bits: 24 bytes counting up from index * 32.
std::string bitmapFrame(int index) {
  std::string bytes(kWidth * kHeight * 4, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(index * 32 + static_cast<int>(i));
  return bytes;
}

// The top row of frame `index` as the program holds it: the bitmap's last row.
std::vector<std::uint8_t> topRow(int index) {
  std::vector<std::uint8_t> row;
  for (std::size_t i = kWidth * 4; i < kWidth * 4 * 2; ++i) row.push_back(static_cast<std::uint8_t>(index * 32 + i));
  return row;
}

std::vector<std::uint8_t> rowOf(const Media::ImageBuffer& image, std::uint32_t y, std::size_t bytes) {
  const auto* row = reinterpret_cast<const std::uint8_t*>(image.row(y));
  return std::vector<std::uint8_t>(row, row + bytes);
}

AviContent bitmapAvi(int frames, AviIndex index) {
  AviContent content;
  content.index = index;
  for (int i = 0; i < frames; ++i) content.frames.push_back({bitmapFrame(i)});
  return content;
}

// Frames of the fake decoder: a key frame where `keys` says, its first byte the frame.
AviContent fakeAvi(int frames, const std::vector<int>& keys, AviIndex index = AviIndex::Absolute) {
  AviContent content;
  content.handler = "FAKE";
  content.compression = "FAKE";
  content.index = index;
  for (int i = 0; i < frames; ++i) {
    const bool key = std::find(keys.begin(), keys.end(), i) != keys.end();
    content.frames.push_back({std::string(1, static_cast<char>(i)) + "data", key});
  }
  return content;
}

// Sample k of withSound(), as a block holds it.
float soundAt(int k) { return static_cast<std::int16_t>(static_cast<std::uint16_t>(k * 10)) / 32768.0f; }

// Mono 16-bit sound at 1000 samples a second: sample k is k * 10 (wrapping round), in
// chunks of 300.
AviContent withSound(AviContent content, int samples) {
  content.waveFormat = PluginTest::waveFormat(1, 1, 1000, 16);
  std::string data;
  for (int k = 0; k < samples; ++k) data += PluginTest::le16(static_cast<std::uint16_t>(k * 10));
  for (std::size_t at = 0; at < data.size(); at += 600) content.audio.push_back({data.substr(at, 600)});
  return content;
}

class AviFileReaderTest : public ::testing::Test {
 public:
  std::shared_ptr<Plugin::InputFile> open(const std::string& bytes, const std::string& name = "movie.avi") {
    return reader_.open(directory_.writeFile(name, bytes).wstring(), 0);
  }

 protected:
  std::shared_ptr<Plugin::InputFile> openFake(const std::string& bytes) {
    Plugin::AviFileReader reader(codecs_);
    return reader.open(directory_.writeFile("fake.avi", bytes).wstring(), 0);
  }
  std::vector<std::string> takeCalls() { return std::exchange(codecs_->calls, {}); }
  int shown(Plugin::InputFile& file, std::int32_t frame) {
    const auto image = file.readVideo(frame);
    return image ? static_cast<int>(*image->data()) : -1;
  }

  TestSupport::TempDirectory directory_;
  Plugin::AviFileReader reader_;
  std::shared_ptr<PluginTest::FakeCodecProvider> codecs_ = std::make_shared<PluginTest::FakeCodecProvider>();
};

TEST_F(AviFileReaderTest, Idx1OffsetsFromTheFileOrFromMoviFindTheSameFrames) {
  for (const AviIndex index : {AviIndex::Absolute, AviIndex::Relative}) {
    const auto file = open(PluginTest::makeAvi(bitmapAvi(3, index)));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->flags, Plugin::InputFile::Video);
    EXPECT_EQ(file->frameCount, 3);
    EXPECT_EQ(file->pixelFormat, Format::Bgra8Unorm);
    EXPECT_EQ(file->width, kWidth);
    EXPECT_EQ(file->height, kHeight);
    EXPECT_EQ(file->rate, 30u);
    EXPECT_EQ(file->scale, 1u);
    for (int frame = 0; frame < 3; ++frame) EXPECT_EQ(rowOf(*file->readVideo(frame), 0, 12), topRow(frame));
    // Frames outside the file are its first and last.
    EXPECT_EQ(rowOf(*file->readVideo(7), 0, 12), topRow(2));
    EXPECT_EQ(rowOf(*file->readVideo(-1), 0, 12), topRow(0));
  }
}

TEST_F(AviFileReaderTest, Idx1MatchesStreamDigitsOnlyWhileTheWalkOverMoviMatchesWholeIds) {
  AviContent content = bitmapAvi(3, AviIndex::Absolute);
  content.frames[1].id = "00pc";
  const auto indexed = open(PluginTest::makeAvi(content));
  ASSERT_TRUE(indexed);
  EXPECT_EQ(indexed->frameCount, 3);
  EXPECT_EQ(rowOf(*indexed->readVideo(1), 0, 12), topRow(1));

  content.index = AviIndex::None;
  PluginTest::LogLines log;
  const auto walked = open(PluginTest::makeAvi(content));
  ASSERT_TRUE(walked);
  EXPECT_EQ(walked->frameCount, 2);
  EXPECT_TRUE(log.contains("INFO Plugin::AviFileInput::FileParse::open: invalid video frame num info."));
  EXPECT_EQ(rowOf(*walked->readVideo(1), 0, 12), topRow(2));
}

TEST_F(AviFileReaderTest, WithoutAnIndexDbChunksAreKeyFramesAndDcChunksAreNot) {
  const auto file = openFake(PluginTest::makeAvi(withSound(fakeAvi(4, {0, 2}, AviIndex::None), 1500)));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->flags, Plugin::InputFile::Video | Plugin::InputFile::Audio);
  takeCalls();
  EXPECT_EQ(shown(*file, 3), 3);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"reset 2", "key 2", "decode 3"}));
  EXPECT_EQ(file->readAudio(1)->channelData(0)[0], 10000 / 32768.0f);
}

TEST_F(AviFileReaderTest, OpenDmlIndexesGiveFramesTheirKeyFlagsAndSound) {
  const auto file = openFake(PluginTest::makeAvi(withSound(fakeAvi(6, {0, 4}, AviIndex::Avi2), 1500)));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->frameCount, 6);
  EXPECT_EQ(file->sampleCount, 1500);
  takeCalls();
  EXPECT_EQ(shown(*file, 5), 5);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"reset 4", "key 4", "decode 5"}));
  // Frames 0 to 2 are in the first standard index, 3 to 5 in the second.
  EXPECT_EQ(shown(*file, 3), 3);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"reset 0", "key 0", "decode 1", "decode 2", "decode 3"}));
  const auto block = file->readAudio(1);
  EXPECT_EQ(block->channelData(1)[499], 14990 / 32768.0f);
  EXPECT_EQ(block->channelData(0)[500], 0.0f);
}

TEST_F(AviFileReaderTest, AnAudioLengthBeyondTheIndexIsRepairedAndLogged) {
  AviContent content = withSound(bitmapAvi(2, AviIndex::Absolute), 1500);
  content.audioLength = 90000;
  PluginTest::LogLines log;
  const auto file = open(PluginTest::makeAvi(content));
  ASSERT_TRUE(file);
  EXPECT_TRUE(log.contains("INFO Plugin::AviFileInput::FileParse::open: invalid audio sample num info."));
  EXPECT_EQ(file->sampleCount, 1500);
  EXPECT_FALSE(log.mentions("invalid video frame num info."));
}

TEST_F(AviFileReaderTest, ReadsInOrderDecodeOneChunkAndJumpsStartFromTheKeyFrame) {
  const auto file = openFake(PluginTest::makeAvi(fakeAvi(120, {0, 40, 90})));
  ASSERT_TRUE(file);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"begin 32"}));
  EXPECT_EQ(file->pixelFormat, Format::Bgra8Unorm);

  EXPECT_EQ(shown(*file, 99), 99);
  takeCalls();
  EXPECT_EQ(shown(*file, 100), 100);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"decode 100"}));

  EXPECT_EQ(shown(*file, 50), 50);
  takeCalls();
  EXPECT_EQ(shown(*file, 100), 100);
  std::vector<std::string> fromKey{"reset 90", "key 90"};
  for (int frame = 91; frame <= 100; ++frame) fromKey.push_back("decode " + std::to_string(frame));
  EXPECT_EQ(takeCalls(), fromKey);

  // No key frame between: going on from the last chunk decoded is shorter.
  EXPECT_EQ(shown(*file, 45), 45);
  takeCalls();
  EXPECT_EQ(shown(*file, 48), 48);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"decode 46", "decode 47", "decode 48"}));
  // The same frame again is the picture held.
  EXPECT_EQ(shown(*file, 48), 48);
  EXPECT_TRUE(takeCalls().empty());
}

TEST_F(AviFileReaderTest, AReorderingDecoderIsFedAheadAndDrainedAtTheEnd) {
  codecs_ = std::make_shared<PluginTest::FakeCodecProvider>(1);
  const auto file = openFake(PluginTest::makeAvi(fakeAvi(4, {0})));
  ASSERT_TRUE(file);
  takeCalls();
  EXPECT_EQ(shown(*file, 0), 0);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"reset 0", "key 0", "decode 1"}));
  EXPECT_EQ(shown(*file, 1), 1);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"decode 2"}));
  EXPECT_EQ(shown(*file, 2), 2);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"decode 3"}));
  EXPECT_EQ(shown(*file, 3), 3);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"finish"}));
  EXPECT_EQ(shown(*file, 1), 1);
  EXPECT_EQ(takeCalls(), (std::vector<std::string>{"reset 0", "key 0", "decode 1", "decode 2"}));
}

TEST_F(AviFileReaderTest, DroppedFramesShowTheFrameBefore) {
  AviContent content = bitmapAvi(3, AviIndex::Absolute);
  content.frames[1].data.clear();
  const auto file = open(PluginTest::makeAvi(content));
  ASSERT_TRUE(file);
  EXPECT_EQ(rowOf(*file->readVideo(1), 0, 12), topRow(0));
  EXPECT_EQ(rowOf(*file->readVideo(2), 0, 12), topRow(2));
}

TEST_F(AviFileReaderTest, UncompressedHandlersGiveTheirPixelFormats) {
  AviContent dib = bitmapAvi(1, AviIndex::Absolute);
  dib.handler = "dib ";
  dib.bits = 24;
  dib.frames[0].data = std::string("\x01\x02\x03\x04\x05\x06\x07\x08\x09\0\0\0", 12) + std::string(12, '\x7f');
  const auto rgb = open(PluginTest::makeAvi(dib));
  ASSERT_TRUE(rgb);
  EXPECT_EQ(rgb->pixelFormat, Format::Bgrx8Unorm);
  EXPECT_EQ(rowOf(*rgb->readVideo(0), 1, 12), (std::vector<std::uint8_t>{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0}));

  AviContent yuy2 = bitmapAvi(1, AviIndex::Absolute);
  yuy2.handler = "yuy2";
  yuy2.bits = 16;
  yuy2.frames[0].data = "ABCDEFGHabcdefgh";
  const auto packed = open(PluginTest::makeAvi(yuy2));
  ASSERT_TRUE(packed);
  EXPECT_EQ(packed->pixelFormat, Format::Yuy2);
  EXPECT_EQ(rowOf(*packed->readVideo(0), 1, 8), (std::vector<std::uint8_t>{'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'}));

  // Nothing decodes "ABCD": the sound alone carries the file.
  AviContent unknown = withSound(bitmapAvi(1, AviIndex::Absolute), 100);
  unknown.handler = unknown.compression = "ABCD";
  const auto soundOnly = open(PluginTest::makeAvi(unknown));
  ASSERT_TRUE(soundOnly);
  EXPECT_EQ(soundOnly->flags, Plugin::InputFile::Audio);
  EXPECT_EQ(soundOnly->readVideo(0), nullptr);
  unknown.waveFormat.clear();
  EXPECT_FALSE(open(PluginTest::makeAvi(unknown)));
}

TEST_F(AviFileReaderTest, SoundBlocksAreFoundByTheirPlaceInTheStreamAndEndInSilence) {
  const auto file = open(PluginTest::makeAvi(withSound(bitmapAvi(1, AviIndex::Absolute), 1500)));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->sampleCount, 1500);
  EXPECT_EQ(file->sampleFormat, 1u);
  EXPECT_EQ(file->sampleBits, 16u);
  EXPECT_EQ(file->channels, 1u);
  EXPECT_EQ(file->sampleRate, 1000u);
  // Block 1 starts in the middle of the fourth chunk.
  for (const std::int32_t block : {1, 0}) {
    const auto read = file->readAudio(block);
    ASSERT_EQ(read->sampleCount(), 1000u);
    EXPECT_EQ(read->channels(), 2u);
    EXPECT_EQ(read->channelData(0)[1], (block * 1000 + 1) * 10 / 32768.0f);
    EXPECT_EQ(read->channelData(1)[block == 0 ? 999 : 499], (block * 1000 + (block == 0 ? 999 : 499)) * 10 / 32768.0f);
  }
  for (const std::int32_t block : {2, 40, -1}) {
    const auto silent = file->readAudio(block);
    ASSERT_EQ(silent->sampleCount(), 1000u);
    EXPECT_EQ(silent->channelData(0)[0], 0.0f);
    EXPECT_EQ(silent->channelData(1)[999], 0.0f);
  }

  AviContent noSampleSize = withSound(bitmapAvi(1, AviIndex::Absolute), 1500);
  noSampleSize.audioSampleSize = 0;
  EXPECT_EQ(open(PluginTest::makeAvi(noSampleSize))->flags, Plugin::InputFile::Video);
}

TEST_F(AviFileReaderTest, ThreadsReadingFramesAndSoundOfOneFileEachGetTheirOwn) {
  const auto file = openFake(PluginTest::makeAvi(withSound(fakeAvi(60, {0, 20, 40}), 9000)));
  ASSERT_TRUE(file);
  std::vector<int> wrongFrames(4, 0);
  std::vector<std::thread> threads;
  for (int reader = 0; reader < 3; ++reader) {
    threads.emplace_back([&, reader] {
      for (int round = 0; round < 20; ++round) {
        const int frame = (round * 7 + reader * 13) % 60;
        if (shown(*file, frame) != frame) ++wrongFrames[static_cast<std::size_t>(reader)];
      }
    });
  }
  threads.emplace_back([&] {
    for (int block = 0; block < 9; ++block) {
      if (file->readAudio(block)->channelData(0)[3] != soundAt(block * 1000 + 3)) ++wrongFrames[3];
    }
  });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrongFrames, std::vector<int>(4, 0));
}

TEST_F(AviFileReaderTest, MjpegFramesDecodeThroughLibavcodecWithinTwoLevels) {
  constexpr int kFrameWidth = 33;  // odd: the last YUY2 block repeats its pixel
  constexpr int kFrameHeight = 16;
  const auto luma = [](int frame, int x, int y) { return static_cast<std::uint8_t>(40 + frame * 50 + x * 2 + y); };
  AviContent content;
  content.width = kFrameWidth;
  content.height = kFrameHeight;
  content.bits = 24;
  content.handler = "mjpg";
  content.compression = "MJPG";
  for (const PluginTest::EncodedChunk& picture : PluginTest::encodeVideo("mjpeg", kFrameWidth, kFrameHeight, 3, luma)) {
    content.frames.push_back({picture.data});
  }
  const auto file = open(PluginTest::makeAvi(content));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->pixelFormat, Format::Yuy2);
  // Full-range JPEG luma becomes the limited range of YUY2: 16 + y * 219 / 255.
  for (const int frame : {2, 0, 1}) {
    const auto image = file->readVideo(frame);
    ASSERT_TRUE(image);
    for (int y = 0; y < kFrameHeight; ++y) {
      const auto* row = reinterpret_cast<const std::uint8_t*>(image->row(static_cast<std::uint32_t>(y)));
      for (int x = 0; x < kFrameWidth; ++x) {
        const double expected = 16 + luma(frame, x, y) * 219.0 / 255.0;
        ASSERT_NEAR(row[x * 2], expected, 2.0) << "frame " << frame << " at " << x << "," << y;
        ASSERT_NEAR(row[x * 2 + 1], 128, 2.0);
      }
      EXPECT_EQ(row[kFrameWidth * 2], row[(kFrameWidth - 1) * 2]);
    }
  }
}

TEST_F(AviFileReaderTest, ImaAdpcmSoundDecodesInOrderAndAfterAJump) {
  constexpr int kRate = 8000;
  const std::vector<double> source = PluginTest::sine(300, kRate, 4);
  const PluginTest::EncodedSound stream = PluginTest::encodeSound("adpcm_ima_wav", source, kRate);
  AviContent content = bitmapAvi(1, AviIndex::Absolute);
  const auto avgBytes = static_cast<std::uint32_t>(std::int64_t{kRate} * stream.blockAlign / stream.samplesPerBlock);
  content.waveFormat = PluginTest::waveFormat(0x11, 1, kRate, 4, static_cast<std::uint16_t>(stream.blockAlign), avgBytes,
                                           PluginTest::le16(static_cast<std::uint16_t>(stream.samplesPerBlock)));
  for (std::size_t at = 0; at < stream.data.size(); at += static_cast<std::size_t>(stream.blockAlign)) {
    content.audio.push_back({stream.data.substr(at, static_cast<std::size_t>(stream.blockAlign))});
  }
  const auto file = open(PluginTest::makeAvi(content));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->flags, Plugin::InputFile::Video | Plugin::InputFile::Audio);
  EXPECT_EQ(file->sampleBits, 16u);
  EXPECT_NEAR(static_cast<double>(file->sampleCount), source.size(), stream.samplesPerBlock);
  // In order, then jumps, which may drift by a few samples.
  PluginTest::expectBlocksFollow(*file, source, {{0, 0}, {1, 0}, {2, 0}, {1, 6}, {3, 6}});
}

// Frames of `encoder` at `width` x `height` whose luma is 30 + 9 per frame (with a
// fine pattern), read in the order given: each frame's mean luma must be its own.
void expectFramesInOrder(AviFileReaderTest& test, const char* encoder, const char* fourcc, int width, int height,
                         int bFrames, const std::vector<int>& order);

TEST_F(AviFileReaderTest, H264WithBFramesComesOutInDisplayOrder) {
  if (!PluginTest::hasEncoder("libx264")) GTEST_SKIP() << "this libavcodec has no H.264 encoder";
  // In order, backwards, then jumps.
  std::vector<int> order;
  for (int frame = 0; frame < 20; ++frame) order.push_back(frame);
  for (int frame = 19; frame >= 0; frame -= 3) order.push_back(frame);
  for (const int frame : {5, 17, 9, 10, 11, 3}) order.push_back(frame);
  expectFramesInOrder(*this, "libx264", "H264", 64, 32, 2, order);
}

TEST_F(AviFileReaderTest, DvFramesDecodeThroughLibavcodec) {
  expectFramesInOrder(*this, "dvvideo", "dvsd", 720, 576, 0, {0, 1, 2, 0});
}

void expectFramesInOrder(AviFileReaderTest& test, const char* encoder, const char* fourcc, int width, int height,
                         int bFrames, const std::vector<int>& order) {
  const auto luma = [](int frame, int x, int y) { return static_cast<std::uint8_t>(30 + frame * 9 + (x + y) % 4); };
  const int frames = *std::max_element(order.begin(), order.end()) + 1;
  AviContent content;
  content.width = static_cast<std::uint32_t>(width);
  content.height = static_cast<std::uint32_t>(height);
  content.bits = 24;
  content.handler = content.compression = fourcc;
  for (const PluginTest::EncodedChunk& chunk : PluginTest::encodeVideo(encoder, width, height, frames, luma, 1, bFrames)) {
    content.frames.push_back({chunk.data, chunk.key});
  }
  const auto file = test.open(PluginTest::makeAvi(content));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->pixelFormat, Format::Yuy2);
  for (const int frame : order) {
    const auto image = file->readVideo(frame);
    ASSERT_TRUE(image) << frame;
    double sum = 0;
    for (std::uint32_t y = 0; y < image->height(); ++y) {
      const auto* row = reinterpret_cast<const std::uint8_t*>(image->row(y));
      for (int x = 0; x < width; ++x) sum += row[x * 2];
    }
    EXPECT_NEAR(sum / (width * height), 30 + frame * 9 + 1.5, 2.0) << encoder << " frame " << frame;
  }
}

TEST_F(AviFileReaderTest, FilesThatAreNoAviAreRefusedWithTheirMessage) {
  const struct {
    std::string bytes;
    const char* message;
  } cases[] = {
      {"", "invalid RIFF file."},
      {"RIFX\x04\0\0\0AVI ", "invalid RIFF file."},
      {std::string("RIFF\x04\0\0\0WAVE", 12), "AVI chunk not found."},
      {std::string("RIFF\x10\0\0\0AVI LIST\x04\0\0\0movi", 24), "hdrl chunk not found."},
      {std::string("RIFF\x10\0\0\0AVI LIST\x04\0\0\0hdrl", 24), "movi chunk not found."},
  };
  for (const auto& test : cases) {
    PluginTest::LogLines log;
    EXPECT_FALSE(open(test.bytes)) << test.message;
    EXPECT_TRUE(log.mentions(std::string(test.message) + " in ")) << test.message;
  }
}

TEST_F(AviFileReaderTest, DamagedHeadersAndIndexesNeverReadOutsideTheFile) {
  const std::string whole = PluginTest::makeAvi(withSound(fakeAvi(3, {0}, AviIndex::Avi2), 300));
  // Every cut of the file opens or is refused, and whatever opened reads.
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const auto file = openFake(whole.substr(0, length));
    if (!file) continue;
    for (std::int32_t frame = 0; frame < file->frameCount; ++frame) file->readVideo(frame);
    for (std::int32_t block = 0; block < 2; ++block) file->readAudio(block);
  }

  // An index whose entries point past the end reads empty chunks; a frame count of
  // 2^31 reserves nothing.
  AviContent content = bitmapAvi(2, AviIndex::Absolute);
  content.videoLength = 0x80000000;
  std::string bytes = PluginTest::makeAvi(content);
  const std::size_t idx1 = bytes.rfind("idx1");
  bytes.replace(idx1 + 8 + 16 + 8, 4, PluginTest::le32(0x7FFFFFF0));
  const auto pastTheEnd = open(bytes);
  ASSERT_TRUE(pastTheEnd);
  EXPECT_EQ(pastTheEnd->frameCount, 2);
  EXPECT_EQ(rowOf(*pastTheEnd->readVideo(1), 0, 12), topRow(0));

  // Chunks of "negative" size, and a stream format of 64 KiB.
  std::string huge = PluginTest::makeAvi(bitmapAvi(1, AviIndex::Absolute));
  huge.replace(huge.find("movi") - 4, 4, PluginTest::le32(0xFFFFFFF8));
  open(huge);
  AviContent largeFormat = bitmapAvi(1, AviIndex::Absolute);
  largeFormat.videoExtra.assign(0x10000, '\0');
  PluginTest::LogLines log;
  EXPECT_FALSE(open(PluginTest::makeAvi(largeFormat)));
  EXPECT_TRUE(log.contains("INFO Plugin::AviFileInput::FileParse::getVideoStreamHeader: invalid stream format size."));

  // Frames that no file of this length can hold.
  AviContent oversized = bitmapAvi(1, AviIndex::Absolute);
  oversized.width = oversized.height = 16384;
  EXPECT_FALSE(open(PluginTest::makeAvi(oversized)));
  oversized.width = 16385;
  oversized.handler = "FAKE";
  EXPECT_FALSE(openFake(PluginTest::makeAvi(oversized)));
}

}  // namespace
