// The player over the render workers and the SDL output on its dummy and disk drivers:
// queue lengths from the settings, the level meter, playing to the end, volume on the
// captured sound, a seek during playback, and a run with no sound device at all. The
// video worker draws nothing on the recording back end. No timings are asserted.
#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "cache/CacheInstance.h"
#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/input/AudioLoad.h"
#include "effect/item/EffectItemFile.h"
#include "effect/output/AudioOutput.h"
#include "media/DeviceFakeBackend.h"
#include "media/GraphicsDevice.h"
#include "media/audio/AudioBuffer.h"
#include "platform/sdl_audio/AudioOutputService.h"
#include "plugin/InputService.h"
#include "plugin/WaveFileReader.h"
#include "render/LevelMeter.h"
#include "render/MoviePlayerInstance.h"
#include "render/RenderAudioWorker.h"
#include "render/RenderVideoWorker.h"
#include "support/MediaFiles.h"
#include "support/TempDirectory.h"
#include "system/IniFile.h"

namespace {

using Render::MoviePlayerInstance;
using namespace std::chrono_literals;

// Sets an environment variable for the life of a test and puts the old value back.
class ScopedEnvironment {
 public:
  ScopedEnvironment(const char* name, const std::string& value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    setenv(name, value.c_str(), 1);
  }
  ~ScopedEnvironment() { old_.empty() ? unsetenv(name_) : setenv(name_, old_.c_str(), 1); }

 private:
  const char* name_;
  std::string old_;
};

// Stereo float at 48 kHz: left a rising ramp from 0.25 that tells where it was read,
// right a constant 0.5.
std::string sound(std::int32_t samples) {
  std::string data;
  for (std::int32_t n = 0; n < samples; ++n) {
    const float left = 0.25f + static_cast<float>(n) / (4 * samples);
    const float right = 0.5f;
    data.append(reinterpret_cast<const char*>(&left), 4);
    data.append(reinterpret_cast<const char*>(&right), 4);
  }
  return PluginTest::makeWav(PluginTest::waveFormat(3, 2, 48000, 32), data);
}

std::vector<float> readFloats(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::vector<float> samples(bytes.size() / 4);
  std::memcpy(samples.data(), bytes.data(), samples.size() * 4);
  return samples;
}

class Player : public ::testing::Test {
 protected:
  Player() {
    input_.registerPlugin(std::make_shared<Plugin::WaveFileReader>());
    input_.updateExtTypeList();
    scene_ = edit_.getScene(0);
    scene_->videoRate = 30;
    scene_->videoScale = 1;
    scene_->audioRate = 48000;
    scene_->width = 16;
    scene_->height = 16;
    video_.setLayerWalk([](Render::RenderVideoWorker&, const Render::SectionArguments&) {});
    Edit::Object& object = *scene_->createEmptyObject(0, 0, 29);
    auto input = std::make_shared<Effect::AudioLoad>();
    input->item<Effect::EffectItemFile>(L"ファイル").setFilePath(directory_.writeFile("s.wav", sound(48000)).wstring());
    object.effects.push_back(input);
    object.effects.push_back(std::make_shared<Effect::AudioOutput>());
    scene_->update();
  }
  ~Player() override {
    player_.reset();
    video_.stop();
    audio_.stop();
  }

  void makePlayer(Render::AudioOutputDevice* output) {
    player_ = std::make_unique<MoviePlayerInstance>(
        MoviePlayerInstance::Parts{&edit_, &video_, &audio_, output, &ini_, false});
    player_->setFrameShown([this](const MoviePlayerInstance::VideoRecord& record) { shown_.push_back(record.frame); });
  }
  // Ticks as the main loop would until the run ends, within a generous bound.
  void playOut() {
    for (int i = 0; i < 2000 && player_->playing(); ++i) {
      player_->tick();
      std::this_thread::sleep_for(std::chrono::milliseconds(MoviePlayerInstance::kTickMilliseconds));
    }
  }

  TestSupport::TempDirectory directory_;
  System::IniFile ini_;
  Plugin::InputService input_{&ini_};
  Edit::EditService edit_;
  Cache::CacheInstance cache_{Cache::CacheInstance::Services{&ini_, &input_, &edit_, nullptr, nullptr, nullptr}};
  Media::GraphicsDevice device_{[] { return std::make_unique<MediaTest::FakeBackend>(); }, Media::DeviceSettings{}};
  Render::RenderVideoWorker video_{device_, edit_, Render::VideoWorkerSettings{1920 * 1080, {}, nullptr}};
  Render::RenderAudioWorker audio_{edit_};
  std::shared_ptr<Edit::Scene> scene_;
  std::unique_ptr<MoviePlayerInstance> player_;
  std::vector<std::int32_t> shown_;
};

TEST(PlayerSettings, QueueLengthsComeFromTheBufferTime) {
  EXPECT_EQ(MoviePlayerInstance::videoBufferFramesFor(500, 30, 1), 15);
  EXPECT_EQ(MoviePlayerInstance::audioBufferFramesFor(500, 30, 1), 30);
  EXPECT_EQ(MoviePlayerInstance::videoBufferFramesFor(0, 30, 1), 2);
  EXPECT_EQ(MoviePlayerInstance::audioBufferFramesFor(0, 30, 1), 30);
  EXPECT_EQ(MoviePlayerInstance::audioBufferFramesFor(2000, 30000, 1001), 60);
}

TEST(PlayerLevelMeter, LevelFallsHoldStaysAndOnlyThePositiveSwingIsAPeak) {
  Render::LevelMeter meter;
  meter.reset(30, 1);
  Media::AudioBuffer loud(1600, 2);
  Media::AudioBuffer silent(1600, 2);
  Media::AudioBuffer negative(1600, 2);
  silent.clear();
  for (std::uint32_t i = 0; i < 1600; ++i) {
    loud.channelData(0)[i] = loud.channelData(1)[i] = i == 800 ? 1.0f : 0.0f;
    negative.channelData(0)[i] = negative.channelData(1)[i] = -0.5f;
  }
  Render::LevelRecord record = meter.measure(0, silent);
  EXPECT_EQ(record.channels[0].level, -60.0f);
  EXPECT_EQ(record.channels[1].rms, -60.0f);
  record = meter.measure(1, loud);
  EXPECT_FLOAT_EQ(record.channels[0].level, 0.0f);
  EXPECT_FLOAT_EQ(record.channels[0].peakHold, 0.0f);
  record = meter.measure(2, silent);
  EXPECT_FLOAT_EQ(record.channels[0].level, -2.0f);  // 60 dB a second at 30 frames a second
  for (std::int32_t frame = 3; frame <= 91; ++frame) record = meter.measure(frame, silent);
  EXPECT_FLOAT_EQ(record.channels[1].peakHold, 0.0f);  // 3 seconds held
  record = meter.measure(92, silent);
  EXPECT_EQ(record.channels[1].peakHold, -60.0f);
  record = meter.measure(93, negative);
  EXPECT_EQ(record.channels[0].level, -60.0f);
  // One frame of 0.5 in a window of 12: rms sqrt(0.25 / 12).
  EXPECT_NEAR(record.channels[0].rms, 20.0 * std::log10(std::sqrt(0.25 / 12)), 1e-4);
  EXPECT_EQ(record.channels[0].unused, -60.0f);
}

TEST_F(Player, PlaysToTheEndWithTheSoundOfEachFrameInOrder) {
  const std::string capture = (directory_.path() / "out.raw").string();
  const ScopedEnvironment driver("SDL_AUDIODRIVER", "disk");
  const ScopedEnvironment file("SDL_DISKAUDIOFILE", capture);
  {
    Platform::AudioOutputService output;
    makePlayer(&output);
    scene_->cursorFrame = 0;
    player_->startRange(0, 14, true);
    EXPECT_TRUE(scene_->playing);
    playOut();
    EXPECT_FALSE(player_->playing());
    EXPECT_FALSE(scene_->playing);
    EXPECT_EQ(player_->playFrame(), 14);
    EXPECT_EQ(scene_->cursorFrame, 14);
    EXPECT_GT(player_->statistics().framesShown, 0);
    EXPECT_GT(output.playedFrames(), 0u);
    // The meter saw every frame; the last reading is the last frame's.
    EXPECT_EQ(player_->levelRecordsUpTo(INT_MAX).frame, 0);  // emptied by the stop
    player_.reset();
  }
  // What the device played: silence until the clock reached the first frame, then the
  // scene's sound sample after sample from its first sample, as far as the run went.
  const std::vector<float> played = readFloats(capture);
  std::size_t first = 0;
  while (first < played.size() && played[first] == 0.0f) ++first;
  ASSERT_LT(first + 2 * 4800, played.size());
  EXPECT_EQ(first % 2, 0u);
  EXPECT_FLOAT_EQ(played[first], 0.25f);
  EXPECT_FLOAT_EQ(played[first + 1], 0.5f);
  for (std::size_t n = 1; n < 4800; ++n) {
    ASSERT_FLOAT_EQ(played[first + 2 * n], 0.25f + static_cast<float>(n) / (4 * 48000)) << n;
  }
}

TEST_F(Player, VolumeScalesThePlayedSoundUpToFull) {
  for (const std::int32_t volume : {50, 150}) {
    const std::string capture = (directory_.path() / ("v" + std::to_string(volume) + ".raw")).string();
    const ScopedEnvironment driver("SDL_AUDIODRIVER", "disk");
    const ScopedEnvironment file("SDL_DISKAUDIOFILE", capture);
    {
      Platform::AudioOutputService output;
      makePlayer(&output);
      player_->setVolume(volume);
      player_->startRange(0, 5, true);
      playOut();
      player_.reset();
    }
    const std::vector<float> played = readFloats(capture);
    std::size_t first = 0;
    while (first < played.size() && played[first] == 0.0f) ++first;
    ASSERT_LT(first + 2, played.size()) << volume;
    EXPECT_FLOAT_EQ(played[first + 1], volume == 50 ? 0.25f : 0.5f) << volume;
  }
}

TEST_F(Player, ASeekRestartsBothQueuesAndAnEditStopsTheRun) {
  Platform::AudioOutputService output;
  makePlayer(&output);
  player_->startRange(0, 29, false);
  for (int i = 0; i < 400 && shown_.empty(); ++i) {
    player_->tick();
    std::this_thread::sleep_for(std::chrono::milliseconds(MoviePlayerInstance::kTickMilliseconds));
  }
  ASSERT_FALSE(shown_.empty());
  shown_.clear();
  player_->seek(20);
  EXPECT_TRUE(player_->playing());
  EXPECT_EQ(output.submittedBytes(), 0u);
  playOut();
  ASSERT_FALSE(shown_.empty());
  // Nothing of the first run arrives after the seek; the picture goes on from 20.
  EXPECT_GE(shown_.front(), 20);
  EXPECT_EQ(player_->playFrame(), 29);

  // An edit stops a run before it takes the model, leaving the cursor where it showed.
  player_->startRange(0, 29, false);
  { const Edit::EditSection section(edit_); }
  EXPECT_FALSE(player_->playing());
  EXPECT_EQ(scene_->cursorFrame, player_->playFrame());
}

TEST_F(Player, AStoppedSeekMeasuresTheFrameUnlessTheMeterIsKeptToPlayback) {
  makePlayer(nullptr);
  player_->meterAt(5);
  audio_.waitRendering();
  const Render::LevelRecord reading = player_->levelRecordsUpTo(5);
  EXPECT_EQ(reading.frame, 5);
  EXPECT_NEAR(reading.channels[1].level, 20.0 * std::log10(0.5), 1e-4);  // the right side is 0.5
  player_.reset();  // which stores its settings
  ini_.value("Player", "LevelMeterOnlyPlayback").setInt(1);
  makePlayer(nullptr);
  player_->meterAt(6);
  audio_.waitRendering();
  EXPECT_EQ(player_->levelRecordsUpTo(6).frame, 0);
}

TEST_F(Player, WithNoSoundDeviceThePictureStillPlays) {
  const ScopedEnvironment driver("SDL_AUDIODRIVER", "no-such-driver");
  Platform::AudioOutputService output;
  makePlayer(&output);
  player_->startRange(25, 29, false);
  EXPECT_FALSE(output.exists());
  playOut();
  EXPECT_EQ(player_->playFrame(), 29);
  EXPECT_GT(player_->statistics().framesShown, 0);
  EXPECT_EQ(player_->statistics().audioUnderruns, 0);
}

}  // namespace
