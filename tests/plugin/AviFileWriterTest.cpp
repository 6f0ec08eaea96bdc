// AVI files written by the program: the header fields of a tiny file worked out by hand,
// and files read back whole by the program's own reader and by libavformat, with one
// RIFF and with several (a small RIFF limit stands in for 2 GB), which then carry
// OpenDML super indexes, standard indexes and the extended header.
#include <gtest/gtest.h>

extern "C" {
#include <libavformat/avformat.h>
}

#include <cstring>
#include <string>
#include <vector>

#include "media/image/ImageBuffer.h"
#include "media/riff/LittleEndian.h"
#include "plugin/AviFileReader.h"
#include "plugin/AviFileWriter.h"
#include "plugin/InputFile.h"
#include "support/TempDirectory.h"
#include "system/File.h"

namespace {

using Plugin::AviFileWriter;

struct Written {
  std::string path;
  std::string bytes;
};

// `frames` frames of width x height in RGB24 (frame i's bytes all i), each with
// `samples` stereo 16-bit samples.
Written write(const TestSupport::TempDirectory& folder, std::uint32_t width, std::uint32_t height, int frames,
              std::uint32_t samples, std::uint64_t riffLimit = AviFileWriter::kRiffLimit) {
  const std::string path = (folder.path() / "out.avi").string();
  System::File file;
  file.open(folder.path().wstring() + L"/out.avi", System::File::Mode::Write);
  Plugin::AviStreamFormat format;
  format.width = width;
  format.height = height;
  AviFileWriter writer(file, format, riffLimit);
  const auto header = Media::ImageBuffer::getBitmapInfoHeader(Media::Format::Bgrx8Unorm, width, height);
  for (int i = 0; i < frames; ++i) {
    const std::vector<std::byte> bitmap(header.biSizeImage, std::byte(i));
    std::vector<std::byte> sound(samples * 4);
    for (std::uint32_t s = 0; s < samples * 2; ++s) {
      const auto value = static_cast<std::int16_t>(i * 100 + static_cast<int>(s % 50));
      std::memcpy(&sound[s * 2], &value, 2);
    }
    writer.writeFrame(bitmap, sound, samples);
  }
  writer.finish();
  file.close();
  return {path, folder.readFile("out.avi")};
}

std::uint32_t u32(const std::string& bytes, std::size_t at) {
  return Media::readLe32(reinterpret_cast<const std::byte*>(bytes.data() + at));
}

std::size_t find(const std::string& bytes, const char* fourcc, std::size_t from = 0) { return bytes.find(fourcc, from); }

// What libavformat reads: video packets, audio bytes, and the first frame's first byte.
struct FfmpegRead {
  int frames = 0;
  std::int64_t audioBytes = 0;
  int width = 0;
  int height = 0;
};

FfmpegRead readWithFfmpeg(const std::string& path) {
  FfmpegRead result;
  AVFormatContext* context = nullptr;
  if (avformat_open_input(&context, path.c_str(), nullptr, nullptr) != 0) return result;
  avformat_find_stream_info(context, nullptr);
  AVPacket* packet = av_packet_alloc();
  while (av_read_frame(context, packet) >= 0) {
    const AVStream* stream = context->streams[packet->stream_index];
    if (stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
      ++result.frames;
      result.width = stream->codecpar->width;
      result.height = stream->codecpar->height;
    } else {
      result.audioBytes += packet->size;
    }
    av_packet_unref(packet);
  }
  av_packet_free(&packet);
  avformat_close_input(&context);
  return result;
}

TEST(AviFileWriter, TheHeadOfATinyFileHoldsTheFieldsWorkedOutByHand) {
  TestSupport::TempDirectory folder;
  const std::string bytes = write(folder, 4, 2, 3, 1600).bytes;
  ASSERT_EQ(bytes.substr(0, 4), "RIFF");
  EXPECT_EQ(u32(bytes, 4), bytes.size() - 8);
  EXPECT_EQ(bytes.substr(8, 4), "AVI ");
  const std::size_t avih = find(bytes, "avih") + 8;
  EXPECT_EQ(u32(bytes, avih), 33333u);  // microseconds a frame at 30 a second
  EXPECT_EQ(u32(bytes, avih + 12), 0x810u);
  EXPECT_EQ(u32(bytes, avih + 16), 3u);
  EXPECT_EQ(u32(bytes, avih + 24), 2u);
  EXPECT_EQ(u32(bytes, avih + 32), 4u);
  EXPECT_EQ(u32(bytes, avih + 36), 2u);
  const std::size_t video = find(bytes, "strh") + 8;
  EXPECT_EQ(bytes.substr(video, 4), "vids");
  EXPECT_EQ(u32(bytes, video + 20), 1u);   // scale
  EXPECT_EQ(u32(bytes, video + 24), 30u);  // rate
  EXPECT_EQ(u32(bytes, video + 32), 3u);   // length
  EXPECT_EQ(u32(bytes, video + 36), 24u);  // largest frame: two rows of 12 bytes
  EXPECT_EQ(u32(bytes, video + 56), 4u);   // the frame's right and bottom
  const std::size_t audio = find(bytes, "strh", video) + 8;
  EXPECT_EQ(bytes.substr(audio, 4), "auds");
  EXPECT_EQ(u32(bytes, audio + 20), 4u);       // a block of two 16-bit channels
  EXPECT_EQ(u32(bytes, audio + 24), 192000u);  // bytes a second
  EXPECT_EQ(u32(bytes, audio + 32), 4800u);    // samples
  EXPECT_EQ(u32(bytes, audio + 44), 4u);
  // Three JUNK chunks stand where an extended file has its indexes and header.
  EXPECT_EQ(find(bytes, "indx"), std::string::npos);
  EXPECT_NE(find(bytes, "odml"), std::string::npos);
  EXPECT_EQ(bytes.substr(find(bytes, "odml") - 8, 4), "JUNK");
  const std::size_t first = find(bytes, "00db");
  EXPECT_EQ((first + 8) % 2048, 8u);
  const std::size_t idx1 = find(bytes, "idx1");
  ASSERT_NE(idx1, std::string::npos);
  EXPECT_EQ(u32(bytes, idx1 + 4), 6u * 16);
  const std::size_t moviType = find(bytes, "movi");
  EXPECT_EQ(u32(bytes, idx1 + 8 + 8), first - moviType);
}

TEST(AviFileWriter, OneRiffReadsBackWholeThroughBothReaders) {
  TestSupport::TempDirectory folder;
  const Written written = write(folder, 4, 2, 3, 1600);
  Plugin::AviFileReader reader;
  const auto file = reader.open(folder.path().wstring() + L"/out.avi", 0);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->frameCount, 3);
  EXPECT_EQ(file->rate, 30u);
  EXPECT_EQ(file->width, 4u);
  EXPECT_EQ(file->height, 2u);
  EXPECT_EQ(file->sampleCount, 4800);
  EXPECT_EQ(std::to_integer<int>(*file->readVideo(2)->data()), 2);
  const FfmpegRead ffmpeg = readWithFfmpeg(written.path);
  EXPECT_EQ(ffmpeg.frames, 3);
  EXPECT_EQ(ffmpeg.audioBytes, 4800 * 4);
  EXPECT_EQ(ffmpeg.width, 4);
}

TEST(AviFileWriter, PastTheLimitFurtherRiffsCarryOpenDmlIndexesAndReadBackWhole) {
  TestSupport::TempDirectory folder;
  // 64x64 RGB24 is 12 KiB a frame: a 40 KiB limit closes a RIFF every few frames.
  const Written written = write(folder, 64, 64, 20, 1600, 40 * 1024);
  const std::string& bytes = written.bytes;
  EXPECT_NE(find(bytes, "AVIX"), std::string::npos);
  EXPECT_NE(find(bytes, "ix00"), std::string::npos);
  EXPECT_NE(find(bytes, "ix01"), std::string::npos);
  EXPECT_EQ(bytes.substr(find(bytes, "odml") - 8, 4), "LIST");
  const std::size_t indx = find(bytes, "indx");
  ASSERT_NE(indx, std::string::npos);
  EXPECT_GT(u32(bytes, indx + 8 + 4), 1u);  // entries in use
  const std::size_t avih = find(bytes, "avih") + 8;
  const std::size_t video = find(bytes, "strh") + 8;
  EXPECT_LT(u32(bytes, avih + 16), 20u);  // only the first RIFF's frames
  EXPECT_EQ(u32(bytes, video + 32), 20u);
  EXPECT_EQ(u32(bytes, find(bytes, "dmlh") + 8), 20u);
  // Every RIFF's first frame has its data on a multiple of 2048 plus 8.
  for (std::size_t riff = find(bytes, "AVIX"); riff != std::string::npos; riff = find(bytes, "AVIX", riff + 4)) {
    EXPECT_EQ((find(bytes, "00db", riff) + 8) % 2048, 8u);
  }

  Plugin::AviFileReader reader;
  const auto file = reader.open(folder.path().wstring() + L"/out.avi", 0);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->frameCount, 20);
  EXPECT_EQ(file->sampleCount, 20 * 1600);
  EXPECT_EQ(std::to_integer<int>(*file->readVideo(19)->data()), 19);
  const FfmpegRead ffmpeg = readWithFfmpeg(written.path);
  EXPECT_EQ(ffmpeg.frames, 20);
  EXPECT_EQ(ffmpeg.audioBytes, 20 * 1600 * 4);
}

}  // namespace
