// Movies and sounds played by their input effects from files made here, through the
// program's own readers and the cache: which frame of an AVI a timeline frame shows,
// and which samples of a WAV a frame's span hears, at speeds 100, 200, -100 and 50,
// looping or not, and with the start of the object cut.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "cache/CacheInstance.h"
#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/input/AudioLoad.h"
#include "effect/input/MediaAccess.h"
#include "effect/input/MovieLoad.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemNumber.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/audio/WaveformBuffer.h"
#include "media/image/ImageBuffer.h"
#include "plugin/AviFileReader.h"
#include "plugin/InputService.h"
#include "plugin/WaveFileReader.h"
#include "render/ObjectContext.h"
#include "support/MediaFiles.h"
#include "support/TempDirectory.h"
#include "system/IniFile.h"

namespace {

constexpr std::int32_t kStart = 10;           // the object's first frame
constexpr std::int32_t kAviFrames = 20;       // at 30 a second: two thirds of a second
constexpr std::int32_t kWavSamples = 96000;   // two seconds at 48 kHz
constexpr std::uint32_t kSpan = 1600;         // samples of one frame at 30 a second

// Frame i of the movie is one pixel whose blue byte is i.
std::string movie() {
  PluginTest::AviContent content;
  content.width = 1;
  content.height = 1;
  for (int i = 0; i < kAviFrames; ++i) content.frames.push_back({std::string{char(i), 0, 0, char(255)}});
  return PluginTest::makeAvi(content);
}

// Sample n of the sound is n / 96000: its value tells where it was read.
std::string ramp() {
  std::string data;
  for (int n = 0; n < kWavSamples; ++n) {
    const float value = static_cast<float>(n) / kWavSamples;
    data.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  return PluginTest::makeWav(PluginTest::waveFormat(3, 1, 48000, 32), data);
}

float at(double sample) { return static_cast<float>(sample / kWavSamples); }

class InputSources : public ::testing::Test {
 protected:
  InputSources() {
    input_.registerPlugin(std::make_shared<Plugin::AviFileReader>());
    input_.registerPlugin(std::make_shared<Plugin::WaveFileReader>());
    input_.updateExtTypeList();
    scene_ = edit_.getScene(0);
    scene_->videoRate = 30;
    scene_->videoScale = 1;
    scene_->audioRate = 48000;
    object_ = scene_->createEmptyObject(0, kStart, kStart + 99);
    movie_.item<Effect::EffectItemFile>(L"ファイル").setFilePath(directory_.writeFile("clip.avi", movie()).wstring());
    sound_.item<Effect::EffectItemFile>(L"ファイル").setFilePath(directory_.writeFile("ramp.wav", ramp()).wstring());
  }

  template <class E>
  void set(E& effect, double speed, double position = 0.0, bool loop = false) {
    effect.template item<Effect::EffectItemNumber>(L"再生速度").setValue(0, speed);
    effect.template item<Effect::EffectItemNumber>(L"再生位置").setValue(0, position);
    effect.template item<Effect::EffectItemCheck>(L"ループ再生").setValue(loop);
  }

  Render::ObjectContext contextAt(std::int32_t frame) {
    Render::ObjectContext context;
    context.scene = scene_.get();
    context.object = object_;
    context.frame = frame;
    context.exactFrame = frame;
    context.sampleRate = 48000;
    context.sampleCount = kSpan;
    context.objectSample = std::int64_t{frame - kStart} * kSpan;
    return context;
  }

  // The blue byte of the movie frame shown at `frame`.
  int shownFrame(std::int32_t frame) {
    const Render::ObjectContext context = contextAt(frame);
    EXPECT_TRUE(movie_.isPlayable());
    const auto image = cache_.getVideoImage(movie_.sourceName(), movie_.track(),
                                            movie_.sourceFrameTime(movie_.playPositionAt(context)));
    return image ? static_cast<int>(image->row(0)[0]) : -1;
  }

  std::shared_ptr<Media::AudioBuffer> heard(std::int32_t frame) {
    Render::ObjectContext context = contextAt(frame);
    return sound_.inputAudio(context);
  }

  TestSupport::TempDirectory directory_;
  System::IniFile ini_;
  Plugin::InputService input_{&ini_};
  Edit::EditService edit_;
  Cache::CacheInstance cache_{Cache::CacheInstance::Services{&ini_, &input_, &edit_, nullptr, nullptr, nullptr}};
  std::shared_ptr<Edit::Scene> scene_;
  std::shared_ptr<Edit::Object> object_;
  Effect::MovieLoad movie_;
  Effect::AudioLoad sound_;
};

TEST_F(InputSources, MovieFramesFollowSpeedLoopAndCutStart) {
  set(movie_, 100);
  EXPECT_EQ(shownFrame(kStart + 3), 3);
  EXPECT_EQ(shownFrame(kStart + 40), kAviFrames - 1);  // held at the end
  set(movie_, 200);
  EXPECT_EQ(shownFrame(kStart + 3), 6);
  set(movie_, 50);
  EXPECT_EQ(shownFrame(kStart + 3), 1);
  set(movie_, -100);
  EXPECT_EQ(shownFrame(kStart + 3), 17);
  set(movie_, 100, 0.0, true);
  EXPECT_EQ(shownFrame(kStart + 25), 5);
  set(movie_, 100, 0.2);
  EXPECT_EQ(shownFrame(kStart + 3), 9);
}

TEST_F(InputSources, SoundSpansFollowSpeedLoopAndCutStart) {
  set(sound_, 100);
  auto span = heard(kStart + 3);
  ASSERT_TRUE(span);
  ASSERT_EQ(span->sampleCount(), kSpan);
  EXPECT_EQ(span->channelData(0)[0], at(4800));
  EXPECT_EQ(span->channelData(1)[kSpan - 1], at(4800 + kSpan - 1));

  set(sound_, 200);  // each sample the mean of two
  span = heard(kStart + 3);
  EXPECT_FLOAT_EQ(span->channelData(0)[0], at(9600.5));
  EXPECT_FLOAT_EQ(span->channelData(0)[10], at(9620.5));

  set(sound_, 50);  // every other sample halfway between two
  span = heard(kStart + 3);
  EXPECT_FLOAT_EQ(span->channelData(0)[0], at(2400));
  EXPECT_FLOAT_EQ(span->channelData(0)[1], at(2400.5));

  set(sound_, -100);  // the span that ends at 1.9 s, turned round
  span = heard(kStart + 3);
  EXPECT_EQ(span->channelData(0)[0], at(91199));
  EXPECT_EQ(span->channelData(0)[kSpan - 1], at(89600));

  set(sound_, 100, 0.0, true);  // 2.333 s into a two-second loop
  span = heard(kStart + 70);
  ASSERT_TRUE(span);
  EXPECT_EQ(span->channelData(0)[0], at(16000));
  set(sound_, 100);
  EXPECT_FALSE(heard(kStart + 70));  // past the end: nothing

  set(sound_, 100, 0.5);
  EXPECT_EQ(heard(kStart + 3)->channelData(0)[0], at(28800));
}

TEST_F(InputSources, AFileThatCannotBeOpenedLeavesTheObjectSilentAndEmpty) {
  sound_.item<Effect::EffectItemFile>(L"ファイル").setFilePath(directory_.writeFile("bad.wav", "RIFF").wstring());
  EXPECT_FALSE(heard(kStart));
  movie_.item<Effect::EffectItemFile>(L"ファイル").setFilePath((directory_.path() / "gone.avi").wstring());
  EXPECT_FALSE(movie_.isPlayable());
  Render::ObjectContext context = contextAt(kStart);
  EXPECT_FALSE(movie_.inputVideo(context));
}

TEST_F(InputSources, TheWaveformOfASoundIsMadeOnceWithoutWaiting) {
  EXPECT_FALSE(sound_.getWaveform());  // asked for, not there yet
  cache_.waveformCache().wait();
  const std::shared_ptr<Media::WaveformBuffer> waveform = sound_.getWaveform();
  ASSERT_TRUE(waveform);
  ASSERT_EQ(waveform->size(), 2 * Media::WaveformBuffer::kBytesPerBlock);
  // The ramp's last column of the first second lies just below 0.5: (1.5 * 128).
  EXPECT_EQ(waveform->data()[2 * 127 + 1], 191);
  EXPECT_EQ(sound_.getWaveform(), waveform);
}

}  // namespace
