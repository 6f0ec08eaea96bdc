// What mixing a scene costs: 1, 16 and 128 sound objects, each reading its own WAV file
// of 48 kHz stereo float through the reader and the cache, with 音声再生 at a volume and
// pan, one frame at a time at 30 frames a second, through the audio worker's two
// threads. The real-time factor is seconds of sound made per second of wall time; the
// 128 objects share 8 files, so the cache holds every block after the first pass.
//
//   build/bin/sorvel_audio_mix_bench --benchmark_min_time=1
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "BenchRun.h"
#include "cache/CacheInstance.h"
#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/input/AudioLoad.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/output/AudioOutput.h"
#include "media/audio/AudioBuffer.h"
#include "plugin/InputService.h"
#include "plugin/WaveFileReader.h"
#include "render/RenderAudioWorker.h"
#include "support/MediaFiles.h"
#include "system/IniFile.h"

namespace {

constexpr std::int32_t kFrames = 300;  // ten seconds of scene
constexpr std::int32_t kFiles = 8;

std::wstring writeSound(std::int32_t index) {
  std::string data;
  for (std::int32_t n = 0; n < 2 * 48000 * 2; ++n) {
    const float value = static_cast<float>((n * (index + 3)) % 2000) / 2000.0f - 0.5f;
    data.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  const std::filesystem::path path = Bench::scratchFolder() / ("s" + std::to_string(index) + ".wav");
  std::ofstream(path, std::ios::binary) << PluginTest::makeWav(PluginTest::waveFormat(3, 2, 48000, 32), data);
  return path.wstring();
}

void mixObjects(benchmark::State& state) {
  const auto objects = static_cast<std::int32_t>(state.range(0));
  System::IniFile ini;
  Plugin::InputService input(&ini);
  input.registerPlugin(std::make_shared<Plugin::WaveFileReader>());
  input.updateExtTypeList();
  Edit::EditService edit;
  Cache::CacheInstance cache(Cache::CacheInstance::Services{&ini, &input, &edit, nullptr, nullptr, nullptr});
  cache.setCacheSizes(256, 0, 0);
  std::shared_ptr<Edit::Scene> scene = edit.getScene(0);
  scene->videoRate = 30;
  scene->videoScale = 1;
  scene->audioRate = 48000;
  std::wstring files[kFiles];
  for (std::int32_t i = 0; i < kFiles; ++i) files[i] = writeSound(i);
  for (std::int32_t i = 0; i < objects; ++i) {
    Edit::Object& object = *scene->createEmptyObject(i, 0, kFrames - 1);
    auto source = std::make_shared<Effect::AudioLoad>();
    source->item<Effect::EffectItemFile>(L"ファイル").setFilePath(files[i % kFiles]);
    source->item<Effect::EffectItemCheck>(L"ループ再生").setValue(true);
    auto output = std::make_shared<Effect::AudioOutput>();
    output->item<Effect::EffectItemNumber>(L"音量").setValue(0, 50);
    output->item<Effect::EffectItemNumber>(L"左右").setValue(0, (i % 21) * 10 - 100);
    object.effects.push_back(source);
    object.effects.push_back(output);
  }
  scene->update();
  Render::RenderAudioWorker worker(edit);
  std::int64_t samples = 0;
  std::int32_t frame = 0;
  for (auto _ : state) {
    worker.requestFrame(Render::RenderAudioWorker::Single, frame,
                        [&](std::int32_t, Media::AudioBuffer& mix) { samples += mix.sampleCount(); });
    frame = (frame + 1) % kFrames;
    worker.waitRendering();
  }
  worker.stop();
  state.counters["real_time_factor"] =
      benchmark::Counter(static_cast<double>(samples) / 48000.0, benchmark::Counter::kIsRate);
}

}  // namespace

BENCHMARK(mixObjects)->Arg(1)->Arg(16)->Arg(128)->Unit(benchmark::kMicrosecond)->UseRealTime();

int main(int argc, char** argv) {
  const Bench::ScratchDataHome scratch("sorvel-audio-mix-bench");
  return Bench::runRegistered(argc, argv);
}
