// The built-in writers over a source made here: the range an export covers, the names of
// a numbered sequence, the settings a run may override, and AVI files whose frames,
// sound and end after a cancel read back through the program's own reader.
#include <gtest/gtest.h>

#include <cmath>

#include "media/audio/AudioBlockBuffer.h"
#include "media/image/ImageBuffer.h"
#include "plugin/AviFileReader.h"
#include "plugin/BuiltinWriters.h"
#include "plugin/InputFile.h"
#include "support/TempDirectory.h"
#include "system/Exception.h"

namespace {

using Plugin::OutputScene;

// Frame f: each pixel's blue is f, its green the row, its red the column; its sound a
// constant of f / 100 on the left and -f / 100 on the right, 1600 samples.
class CountingSource final : public Plugin::OutputSource {
 public:
  std::shared_ptr<Media::ImageBuffer> video(std::int32_t frame, Media::Format format, bool) override {
    auto image = std::make_shared<Media::ImageBuffer>(format, 4, 2);
    for (std::uint32_t y = 0; y < 2; ++y) {
      for (std::uint32_t x = 0; x < 4; ++x) {
        std::byte* p = image->row(y) + x * 4;
        p[0] = std::byte(frame);
        p[1] = std::byte(y);
        p[2] = std::byte(x);
        p[3] = std::byte{255};
      }
    }
    if (frame == cancelAt && file) file->cancel();
    return image;
  }
  std::shared_ptr<Media::AudioBuffer> audio(std::int32_t frame) override {
    auto sound = std::make_shared<Media::AudioBuffer>(1600, 2);
    std::fill_n(sound->channelData(0), 1600, frame / 100.0f);
    std::fill_n(sound->channelData(1), 1600, -frame / 100.0f);
    return sound;
  }
  std::int32_t cancelAt = -1;
  Plugin::OutputFile* file = nullptr;
};

OutputScene scene(std::int32_t lastFrame, std::int32_t rangeStart = -1, std::int32_t rangeEnd = -1) {
  OutputScene s;
  s.width = 4;
  s.height = 2;
  s.lastFrame = lastFrame;
  s.rangeStart = rangeStart;
  s.rangeEnd = rangeEnd;
  return s;
}

TEST(OutputWriters, TheRangeIsTheSelectionCutToTheSceneWithItsSamples) {
  const auto range = Plugin::outputRange(scene(99, 10, 20));
  EXPECT_EQ(range.startFrame, 10);
  EXPECT_EQ(range.frameCount, 11);
  EXPECT_EQ(range.firstSample, 16000);
  EXPECT_EQ(range.sampleCount, 17600);
  EXPECT_EQ(Plugin::outputRange(scene(99, 90, 150)).frameCount, 10);
  EXPECT_EQ(Plugin::outputRange(scene(99)).frameCount, 100);
  OutputScene ntsc = scene(99, 1, 3);
  ntsc.rate = 30000;
  ntsc.scale = 1001;
  EXPECT_EQ(Plugin::outputRange(ntsc).firstSample, 1602);  // 1601.6 rounded
}

TEST(OutputWriters, SequencesNameTheirPicturesByIndexWithTheDigitsOfTheCount) {
  EXPECT_EQ(Plugin::sequenceFileName(L"/o/x.png", 1000, 0), L"/o/x0000.png");
  EXPECT_EQ(Plugin::sequenceFileName(L"/o/x.png", 1000, 999), L"/o/x0999.png");
  EXPECT_EQ(Plugin::sequenceFileName(L"/o/x.png", 999, 998), L"/o/x998.png");
  Plugin::SequentialFileSave sequence;
  auto source = std::make_shared<CountingSource>();
  EXPECT_NO_THROW(sequence.createFile(scene(9), L"/o/a.JPG", source));
  try {
    sequence.createFile(scene(9), L"/o/a.jpeg", source);
    ADD_FAILURE() << "a.jpeg was taken";
  } catch (const System::Exception& refused) {
    EXPECT_NE(refused.text().find("対応していないファイル拡張子です"), std::string::npos);
  }
}

TEST(OutputWriters, ARunOverridesOnlyKnownSettingsWithValuesTheyTake) {
  Plugin::AviFileSave avi;
  EXPECT_FALSE(avi.overrideSetting("VideoType", L"YUY2"));
  EXPECT_EQ(avi.videoFormat(), Media::Format::Yuy2);
  EXPECT_EQ(avi.getSettingText(), L"Video: YUY2 / Audio: PCM16bit");
  EXPECT_TRUE(avi.overrideSetting("VideoType", L"H264"));
  EXPECT_TRUE(avi.overrideSetting("quality", L"50"));
  Plugin::JpgFileSave jpeg;
  EXPECT_TRUE(jpeg.overrideSetting("quality", L"101"));
  EXPECT_FALSE(jpeg.overrideSetting("quality", L"55"));
  EXPECT_EQ(jpeg.getSettingText(), L"JPEG品質:55");
}

TEST(OutputWriters, AnAviHoldsTheRangesFramesAndSoundAndACancelLeavesAShorterFile) {
  TestSupport::TempDirectory folder;
  const std::wstring path = folder.path().wstring() + L"/out.avi";
  Plugin::AviFileSave avi;
  auto source = std::make_shared<CountingSource>();
  avi.createFile(scene(9, 2, 4), path, source)->save();
  Plugin::AviFileReader reader;
  auto file = reader.open(path, 0);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->frameCount, 3);
  EXPECT_EQ(file->sampleCount, 3 * 1600);
  const auto image = file->readVideo(1);  // frame 3 of the scene
  ASSERT_TRUE(image);
  const std::byte* pixel = image->row(1) + 2 * 4;
  EXPECT_EQ(std::to_integer<int>(pixel[0]), 3);
  EXPECT_EQ(std::to_integer<int>(pixel[1]), 1);
  EXPECT_EQ(std::to_integer<int>(pixel[2]), 2);
  const auto block = file->readAudio(0);
  ASSERT_TRUE(block);
  EXPECT_NEAR(block->channelData(0)[1600], 0.03f, 1e-4);
  EXPECT_NEAR(block->channelData(1)[1600], -0.03f, 1e-4);

  source->cancelAt = 5;
  std::unique_ptr<Plugin::OutputFile> cancelled = avi.createFile(scene(9), path, source);
  source->file = cancelled.get();
  cancelled->save();
  file = reader.open(path, 0);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->frameCount, 6);  // the frame being written when the cancel came is kept
}

}  // namespace
