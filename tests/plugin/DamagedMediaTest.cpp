// Files that once made a reader go wrong, most of them found by the fuzz targets of
// fuzz/MediaReaderFuzz.cpp. Each is opened by the reader of its extension and read
// through; the table says what the reader makes of it. Every file of the folder has its
// line, so a new one cannot be left out.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "media/audio/AudioBlockBuffer.h"
#include "plugin/AviFileReader.h"
#include "plugin/ImageFileReader.h"
#include "plugin/InputFile.h"
#include "plugin/WaveFileReader.h"

namespace {

const std::filesystem::path kDamagedFolder = std::filesystem::path(SORVEL_TEST_DATA_DIR) / "plugin" / "damaged";

struct Outcome {
  std::uint32_t flags;  // 0: refused
  std::int32_t frameCount;
  std::int64_t sampleCount;
};

// What each file is once read.
const std::map<std::string, Outcome> kOutcomes = {
    // An audio header whose length over its rate makes 10^21 samples, which no 64-bit
    // count holds (the conversion was undefined); its rate of 4 GHz then leaves the
    // sound out, and the video stream is not one the reader takes either.
    {"audio-samples-past-a-64-bit-count.avi", {0, 0, 0}},
    // 91 bytes of 16-bit stereo: 22 samples, not the 600,000 that 80 bytes a second at
    // 524 kHz would make of them.
    {"pcm-claims-80-bytes-a-second.wav", {Plugin::InputFile::Audio, 0, 22}},
};

std::unique_ptr<Plugin::InputPlugin> readerFor(const std::filesystem::path& path) {
  const std::string extension = path.extension().string();
  if (extension == ".avi") return std::make_unique<Plugin::AviFileReader>();
  if (extension == ".wav") return std::make_unique<Plugin::WaveFileReader>();
  return std::make_unique<Plugin::ImageFileReader>();
}

TEST(DamagedMedia, EachFileIsReadAsItsLineSays) {
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(kDamagedFolder)) {
    const std::string name = entry.path().filename().string();
    ++files;
    const auto expected = kOutcomes.find(name);
    ASSERT_NE(expected, kOutcomes.end()) << name << " has no line in kOutcomes";
    const std::shared_ptr<Plugin::InputFile> file = readerFor(entry.path())->open(entry.path().wstring(), 0);
    if (expected->second.flags == 0) {
      EXPECT_FALSE(file) << name;
      continue;
    }
    ASSERT_TRUE(file) << name;
    EXPECT_EQ(file->flags, expected->second.flags) << name;
    EXPECT_EQ(file->frameCount, expected->second.frameCount) << name;
    EXPECT_EQ(file->sampleCount, expected->second.sampleCount) << name;
    for (std::int32_t frame = 0; frame < file->frameCount; ++frame) file->readVideo(frame);
    if (file->hasAudio()) {
      for (const std::int32_t block : {0, 1}) EXPECT_EQ(file->readAudio(block)->sampleCount(), file->sampleRate) << name;
    }
  }
  EXPECT_EQ(files, kOutcomes.size());
}

}  // namespace
