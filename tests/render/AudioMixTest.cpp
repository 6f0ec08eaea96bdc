// The mix of scenes built here from WAV files made in the test, read through the
// program's own reader and the cache: volume and pan, the sum of loud sources, the
// sample forms, speed, the sample grid of a 29.97 scene, groups, filters, time control
// and a scene heard inside another.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <thread>

#include "cache/CacheInstance.h"
#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/SceneReader.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "effect/input/AudioLoad.h"
#include "effect/input/SceneLoad.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemSelect.h"
#include "effect/modify/AudioFadeFilter.h"
#include "effect/modify/AudioMonoFilter.h"
#include "effect/modify/AudioVolume.h"
#include "effect/output/AudioOutput.h"
#include "effect/output/GroupAudioControl.h"
#include "effect/output/MovieOutput.h"
#include "effect/output/TimeControl.h"
#include "media/audio/AudioBlockBuffer.h"
#include "media/audio/RawAudioBuffer.h"
#include "plugin/InputService.h"
#include "plugin/WaveFileReader.h"
#include "render/RenderAudioWorker.h"
#include "support/MediaFiles.h"
#include "support/TempDirectory.h"
#include "sync/Event.h"
#include "system/IniFile.h"

namespace {

using Render::RenderAudioWorker;

constexpr std::int32_t kRampSamples = 3 * 48000;

template <class T>
void append(std::string& data, T value) {
  data.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// Sample n is n / kRampSamples, mono float: its value tells where it was read.
std::string ramp() {
  std::string data;
  for (int n = 0; n < kRampSamples; ++n) append(data, static_cast<float>(n) / kRampSamples);
  return PluginTest::makeWav(PluginTest::waveFormat(3, 1, 48000, 32), data);
}
float rampAt(double sample) { return static_cast<float>(sample / kRampSamples); }

// One second of a constant level in the given form.
std::string constant(std::uint16_t tag, std::uint16_t channels, std::uint16_t bits, std::int64_t left,
                     std::int64_t right) {
  std::string data;
  for (int n = 0; n < 48000; ++n) {
    for (std::uint16_t c = 0; c < channels; ++c) {
      const std::int64_t value = c == 0 ? left : right;
      for (std::uint16_t byte = 0; byte < bits / 8; ++byte) data.push_back(static_cast<char>(value >> (8 * byte)));
    }
  }
  return PluginTest::makeWav(PluginTest::waveFormat(tag, channels, 48000, bits), data);
}
std::string floatLevel(float left, float right) {
  std::int32_t l = 0;
  std::int32_t r = 0;
  std::memcpy(&l, &left, 4);
  std::memcpy(&r, &right, 4);
  return constant(3, 2, 32, l, r);
}

class AudioMix : public ::testing::Test {
 protected:
  AudioMix() {
    input_.registerPlugin(std::make_shared<Plugin::WaveFileReader>());
    input_.updateExtTypeList();
    Edit::Object::setControlRangeReader([](const Edit::Object& object) -> std::int32_t {
      if (object.effects.empty() || object.effects.front()->type() != Effect::EffectType::Control) return 0;
      return object.effects.front()->getLayerRange();
    });
    cache_.setSceneAudioRenderer([this](const std::shared_ptr<Edit::Scene>& scene, std::int32_t block,
                                        RenderAudioWorker::BlockCallback deliver) {
      worker_.createSceneAudioBlock(scene, block, std::move(deliver));
    });
    scene_ = edit_.getScene(0);
    setRate(*scene_, 30, 1);
  }
  ~AudioMix() override {
    worker_.stop();
    cache_.setSceneAudioRenderer(nullptr);
    Edit::Object::setControlRangeReader(nullptr);
  }

  static void setRate(Edit::Scene& scene, std::int32_t rate, std::int32_t scale) {
    scene.videoRate = rate;
    scene.videoScale = scale;
    scene.audioRate = 48000;
  }

  std::wstring file(const std::string& name, const std::string& bytes) {
    return directory_.writeFile(name, bytes).wstring();
  }

  // A sound object of `path` on `layer`, frames start .. start + 99, through 音声再生.
  Edit::Object& sound(const std::wstring& path, std::int32_t layer, std::int32_t start = 0,
                      Edit::Scene* scene = nullptr) {
    scene = scene ? scene : scene_.get();
    Edit::Object& object = *scene->createEmptyObject(layer, start, start + 99);
    auto input = std::make_shared<Effect::AudioLoad>();
    input->item<Effect::EffectItemFile>(L"ファイル").setFilePath(path);
    object.effects.push_back(input);
    object.effects.push_back(std::make_shared<Effect::AudioOutput>());
    scene->update();
    return object;
  }
  template <class E>
  E& add(Edit::Object& object) {
    auto effect = std::make_shared<E>();
    object.effects.push_back(effect);
    return *effect;
  }
  template <class E>
  E& control(std::int32_t layer, std::int32_t range) {
    Edit::Object& object = *scene_->createEmptyObject(layer, 0, 99);
    object.control = true;
    auto effect = std::make_shared<E>();
    effect->template item<Effect::EffectItemLayerRange>(L"対象レイヤー数").setValue(range);
    object.effects.push_back(effect);
    scene_->update();
    return *effect;
  }
  static void setNumber(const Effect::EffectBase& effect, const wchar_t* name, double value) {
    effect.item<Effect::EffectItemNumber>(name).setValue(0, value);
  }

  Media::AudioBuffer mixAt(std::int32_t frame) {
    Media::AudioBuffer mix;
    worker_.requestFrame(RenderAudioWorker::Single, frame,
                         [&](std::int32_t, Media::AudioBuffer& buffer) { mix = buffer.clone(); });
    worker_.waitRendering();
    return mix;
  }
  static float left(const Media::AudioBuffer& mix, std::uint32_t i = 0) { return mix.channelData(0)[i]; }
  static float right(const Media::AudioBuffer& mix, std::uint32_t i = 0) { return mix.channelData(1)[i]; }

  TestSupport::TempDirectory directory_;
  System::IniFile ini_;
  Plugin::InputService input_{&ini_};
  Edit::EditService edit_;
  Cache::CacheInstance cache_{Cache::CacheInstance::Services{&ini_, &input_, &edit_, nullptr, nullptr, nullptr}};
  RenderAudioWorker worker_{edit_};
  std::shared_ptr<Edit::Scene> scene_;
};

TEST(AudioGrid, FramesOfA2997SceneTakeTheirSpanAndNeverDrift) {
  const std::int32_t hour = 107892;  // frames of one hour at 30000/1001, rounded
  std::int64_t sum = 0;
  for (std::int64_t frame = 0; frame < hour; ++frame) {
    const std::int64_t span =
        Render::frameStartSample(frame + 1, 48000, 30000, 1001) - Render::frameStartSample(frame, 48000, 30000, 1001);
    ASSERT_TRUE(span == 1601 || span == 1602) << frame;
    sum += span;
  }
  EXPECT_EQ(sum, Render::frameStartSample(hour, 48000, 30000, 1001));
  // 107892 × 1001 / 30000 s is exactly 3599.9964 s.
  EXPECT_EQ(sum, 172799827);
  EXPECT_EQ(Render::frameStartSample(3, 48000, 30000, 1001), 4805);  // 4804.8 rounds up
}

TEST_F(AudioMix, VolumePanAndTheSumOfTwoFullScaleSources) {
  const std::wstring half = file("half.wav", floatLevel(0.5f, 0.5f));
  Effect::EffectBase& output = *sound(half, 0).effects[1];
  setNumber(output, L"音量", 50);
  setNumber(output, L"左右", 50);
  Media::AudioBuffer mix = mixAt(0);
  ASSERT_EQ(mix.sampleCount(), 1600u);
  ASSERT_EQ(mix.channels(), 2u);
  EXPECT_FLOAT_EQ(left(mix, 0), 0.125f);
  EXPECT_FLOAT_EQ(right(mix, 1599), 0.25f);
  setNumber(output, L"左右", -100);
  mix = mixAt(0);
  EXPECT_FLOAT_EQ(left(mix), 0.25f);
  EXPECT_FLOAT_EQ(right(mix), 0.0f);

  // Two full-scale sources add up beyond full scale in the mix; the way out clamps.
  scene_->clear();
  const std::wstring full = file("full.wav", floatLevel(1.0f, -1.0f));
  sound(full, 0);
  sound(full, 1);
  mix = mixAt(5);
  EXPECT_FLOAT_EQ(left(mix), 2.0f);
  EXPECT_FLOAT_EQ(right(mix), -2.0f);
  Media::RawAudioBuffer raw;
  raw.sampleFormat = Media::SampleFormat::Pcm;
  raw.sampleBits = 16;
  raw.channels = 2;
  mix.convertTo(raw);
  std::int16_t pcm[2];
  std::memcpy(pcm, raw.bytes.data(), sizeof pcm);
  EXPECT_EQ(pcm[0], 32767);
  EXPECT_EQ(pcm[1], -32768);
}

TEST_F(AudioMix, SampleFormsAndMonoSources) {
  // 16-bit mono feeds both sides; 24-bit stereo keeps its sides; 8-bit has no sound.
  sound(file("m16.wav", constant(1, 1, 16, 16384, 0)), 0);
  Media::AudioBuffer mix = mixAt(0);
  EXPECT_FLOAT_EQ(left(mix), 0.5f);
  EXPECT_FLOAT_EQ(right(mix), 0.5f);
  scene_->clear();
  sound(file("s24.wav", constant(1, 2, 24, 0x200000, -0x400000)), 0);
  mix = mixAt(0);
  EXPECT_FLOAT_EQ(left(mix), 0.25f);
  EXPECT_FLOAT_EQ(right(mix), -0.5f);
  scene_->clear();
  sound(file("m8.wav", constant(1, 1, 8, 0xff, 0)), 0);
  mix = mixAt(0);
  ASSERT_EQ(mix.sampleCount(), 1600u);
  EXPECT_EQ(left(mix), 0.0f);
  scene_->clear();
  // A float mono source goes through the filters as mono and still sounds on both sides.
  sound(file("ramp.wav", ramp()), 0);
  mix = mixAt(2);
  EXPECT_EQ(left(mix, 7), rampAt(3200 + 7));
  EXPECT_EQ(right(mix, 7), rampAt(3200 + 7));
}

TEST_F(AudioMix, SpeedAndTheSampleGridOfA2997Scene) {
  Edit::Object& object = sound(file("ramp.wav", ramp()), 0, 1);
  Effect::EffectBase& input = *object.effects[0];
  setRate(*scene_, 30000, 1001);
  // The object starts at frame 1: frame 3 hears its samples from frameStart(3) − frameStart(1).
  const std::int64_t at3 = Render::frameStartSample(3, 48000, 30000, 1001) - Render::frameStartSample(1, 48000, 30000, 1001);
  EXPECT_EQ(at3, 3203);
  Media::AudioBuffer mix = mixAt(1);
  ASSERT_EQ(mix.sampleCount(), 1601u);  // frame 1: 1601.6 .. 3203.2 rounds to 1602 .. 3203
  EXPECT_EQ(left(mix, 0), rampAt(0));
  mix = mixAt(3);
  ASSERT_EQ(mix.sampleCount(), Render::frameSpan(*scene_, 3));
  EXPECT_EQ(left(mix, 0), rampAt(at3));
  EXPECT_EQ(right(mix, mix.sampleCount() - 1), rampAt(at3 + mix.sampleCount() - 1));

  setNumber(input, L"再生速度", 200);  // each output the mean of two source samples
  mix = mixAt(3);
  EXPECT_FLOAT_EQ(left(mix, 0), rampAt(2 * at3 + 0.5));
  EXPECT_FLOAT_EQ(left(mix, 100), rampAt(2 * (at3 + 100) + 0.5));
  setNumber(input, L"再生速度", -100);  // backwards from the end of the source
  mix = mixAt(3);
  EXPECT_NEAR(left(mix, 0), rampAt(kRampSamples - at3), 2.0 / kRampSamples);
  EXPECT_GT(left(mix, 0), left(mix, 1));
}

TEST_F(AudioMix, GroupsMultiplyTheirGainsAndFiltersRunInTheChain) {
  const std::wstring half = file("half.wav", floatLevel(0.5f, 0.5f));
  auto& outer = control<Effect::GroupAudioControl>(0, 0);
  setNumber(outer, L"音量", 50);
  setNumber(outer, L"左右", 50);
  sound(half, 1);
  Media::AudioBuffer mix = mixAt(0);
  EXPECT_FLOAT_EQ(left(mix), 0.5f * 0.25f);
  EXPECT_FLOAT_EQ(right(mix), 0.5f * 0.5f);
  EXPECT_FLOAT_EQ(outer.leftGain(), 0.25f);
  EXPECT_FLOAT_EQ(outer.rightGain(), 0.5f);

  // A group inside the first multiplies with it; its range of one layer ends at layer 3.
  auto& inner = control<Effect::GroupAudioControl>(2, 1);
  setNumber(inner, L"左右", -50);
  sound(half, 3);
  sound(half, 4);
  mix = mixAt(0);
  // Layer 1 and 4 under the outer group, layer 3 under both.
  EXPECT_FLOAT_EQ(left(mix), 0.5f * 0.25f * 2 + 0.5f * 0.25f);
  EXPECT_FLOAT_EQ(right(mix), 0.5f * 0.5f * 2 + 0.5f * 0.5f * 0.5f);

  scene_->clear();
  Edit::Object& object = sound(file("lr.wav", floatLevel(0.8f, 0.2f)), 0);
  auto& mono = add<Effect::AudioMonoFilter>(object);
  mix = mixAt(0);
  EXPECT_FLOAT_EQ(left(mix), 0.5f);
  EXPECT_FLOAT_EQ(right(mix), 0.5f);
  mono.item<Effect::EffectItemSelect>(L"変換方法").setValue(2);
  auto& volume = add<Effect::AudioVolume>(object);
  setNumber(volume, L"音量", 200);
  setNumber(volume, L"左右", 50);
  mix = mixAt(0);
  EXPECT_FLOAT_EQ(left(mix), 0.2f * 2 * 0.5f);
  EXPECT_FLOAT_EQ(right(mix), 0.2f * 2);
  volume.disable = true;
  mono.disable = true;
  // A fade in of half a second rises sample by sample from silence.
  auto& fade = add<Effect::AudioFadeFilter>(object);
  setNumber(fade, L"イン", 0.5);
  setNumber(fade, L"アウト", 0.0);
  mix = mixAt(6);
  EXPECT_FLOAT_EQ(left(mix, 0), 0.8f * 9600 / 24000);
  EXPECT_FLOAT_EQ(right(mix, 100), 0.2f * 9700 / 24000);
  EXPECT_FLOAT_EQ(left(mixAt(20)), 0.8f);

  // A filter object on the next layer joins the chain while any of its filters is on.
  fade.disable = true;
  Edit::Object& filters = *scene_->createEmptyObject(1, 0, 99);
  auto& off = add<Effect::AudioVolume>(filters);
  auto& on = add<Effect::AudioVolume>(filters);
  off.disable = true;
  setNumber(off, L"音量", 0);
  setNumber(on, L"音量", 50);
  scene_->update();
  EXPECT_FLOAT_EQ(left(mixAt(20)), 0.4f);
  on.disable = true;
  EXPECT_FLOAT_EQ(left(mixAt(20)), 0.8f);
}

TEST_F(AudioMix, TimeControlHoldsTheLayersOfItsRangeAndThenLetsGo) {
  const std::wstring path = file("ramp.wav", ramp());
  auto& time = control<Effect::TimeControl>(0, 1);
  setNumber(time, L"位置", 10);  // always 10% into its 100 frames: frame 9.9
  sound(path, 1);
  sound(path, 2);
  const Media::AudioBuffer first = mixAt(20);
  const Media::AudioBuffer later = mixAt(30);
  const double held = 9.9 * 1600;
  // Layer 1 is held at 9.9 frames, layer 2 plays the scene's own time.
  EXPECT_FLOAT_EQ(left(first, 0), rampAt(held) + rampAt(20 * 1600));
  EXPECT_FLOAT_EQ(left(later, 0), rampAt(held) + rampAt(30 * 1600));
}

TEST_F(AudioMix, ASceneIsHeardInsideAnotherThroughItsBlocks) {
  // The inner scene runs at 29.97, so its second block starts inside a frame.
  std::shared_ptr<Edit::Scene> inner = edit_.getScene(1);
  setRate(*inner, 30000, 1001);
  setRate(*scene_, 30000, 1001);
  sound(file("ramp.wav", ramp()), 0, 0, inner.get());
  Edit::Object& object = *scene_->createEmptyObject(0, 0, 99);
  auto input = std::make_shared<Effect::SceneLoad>();
  input->item<Effect::EffectItemScene>(L"シーン").setValue(1);
  object.effects.push_back(input);
  object.effects.push_back(std::make_shared<Effect::MovieOutput>());
  scene_->update();
  for (const std::int32_t frame : {3, 31}) {
    const Media::AudioBuffer mix = mixAt(frame);
    const std::int64_t at = Render::frameStartSample(*scene_, frame);
    ASSERT_EQ(mix.sampleCount(), Render::frameSpan(*scene_, frame));
    EXPECT_EQ(left(mix, 0), rampAt(at)) << frame;
    EXPECT_EQ(right(mix, mix.sampleCount() - 1), rampAt(at + mix.sampleCount() - 1)) << frame;
  }

  // A scene inside itself is silent there.
  input->item<Effect::EffectItemScene>(L"シーン").setValue(0);
  sound(file("half.wav", floatLevel(0.5f, 0.5f)), 1);
  EXPECT_FLOAT_EQ(left(mixAt(3)), 0.5f);
}

TEST_F(AudioMix, AMixAskedUnderAReaderIsMadeWhileAnEditWaitsForTheLock) {
  sound(file("half.wav", floatLevel(0.5f, 0.25f)), 0);
  Sync::Event held;
  Media::AudioBuffer heard;
  std::thread asker([&] {
    const Edit::SceneReader reader(edit_);
    held.set();
    // Lets the edit below queue for the lock; the mix must not wait behind it.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    const auto rendering = worker_.startRendering(scene_, 3);
    rendering->done.wait();
    heard = rendering->buffer.clone();
  });
  held.wait();
  { const Edit::EditSection section(edit_); }
  asker.join();
  ASSERT_EQ(heard.sampleCount(), 1600u);
  EXPECT_FLOAT_EQ(right(heard, 1599), 0.25f);
}

}  // namespace
