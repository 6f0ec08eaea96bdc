// Loading projects through the file, as the editor opens them: many scenes with an
// object each, many objects that each name a scene the file never declares, and many
// objects on one scene. Each family runs at 1,000, 10,000 and 100,000, and the fitted
// complexity says whether the time grows linearly with the file.
//
//   build/bin/sorvel_project_load_bench --benchmark_min_time=0.05
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "BenchRun.h"
#include "edit/EditService.h"
#include "edit/ProjectFile.h"
#include "effect/EffectService.h"


namespace {

// Built once: registering every effect costs more than the smaller loads.
Effect::EffectService& effects() {
  static Effect::EffectService service;
  return service;
}

std::string object(std::int64_t number, std::int64_t scene, std::int64_t start) {
  const std::string n = std::to_string(number);
  return "[" + n + "]\r\nlayer=0\r\nscene=" + std::to_string(scene) + "\r\nframe=" + std::to_string(start) + "," +
         std::to_string(start + 9) + "\r\n[" + n + ".0]\r\neffect.name=図形\r\n[" + n +
         ".1]\r\neffect.name=標準描画\r\n";
}

std::string sceneSection(std::int64_t index) {
  const std::string i = std::to_string(index);
  return "[scene." + i + "]\r\nscene=" + i + "\r\nvideo.width=1280\r\nvideo.height=720\r\nvideo.rate=30\r\n"
         "video.scale=1\r\n";
}

enum class Shape { ScenesWithAnObjectEach, ObjectsNamingNewScenes, ObjectsOnOneScene };

std::string projectText(Shape shape, std::int64_t count) {
  std::string text = "[project]\r\nversion=2001801\r\ndisplay.scene=0\r\n";
  if (shape == Shape::ScenesWithAnObjectEach) {
    for (std::int64_t i = 0; i < count; ++i) text += sceneSection(i);
  }
  for (std::int64_t i = 0; i < count; ++i) {
    text += shape == Shape::ObjectsOnOneScene ? object(i, 0, i * 10) : object(i, i, 0);
  }
  return text;
}

void load(benchmark::State& state, Shape shape) {
  const std::filesystem::path path = Bench::scratchFolder() / ("load-" + std::to_string(state.range(0)) + ".svj2");
  std::ofstream(path, std::ios::binary) << projectText(shape, state.range(0));
  Edit::EditService edit;
  for (auto _ : state) {
    const auto result = Edit::ProjectFile::load(edit, effects(), path.wstring());
    if (result.outcome != Edit::ProjectFile::LoadResult::Outcome::Loaded) {
      state.SkipWithError("the generated project did not load whole");
      break;
    }
  }
  state.SetComplexityN(state.range(0));
  std::filesystem::remove(path);
}

void registerAll() {
  const struct {
    const char* name;
    Shape shape;
  } families[] = {
      {"ScenesWithAnObjectEach", Shape::ScenesWithAnObjectEach},
      {"ObjectsNamingNewScenes", Shape::ObjectsNamingNewScenes},
      {"ObjectsOnOneScene", Shape::ObjectsOnOneScene},
  };
  for (const auto& family : families) {
    benchmark::RegisterBenchmark((std::string("ProjectLoad/") + family.name).c_str(),
                                 [shape = family.shape](benchmark::State& state) { load(state, shape); })
        ->RangeMultiplier(10)
        ->Range(1000, 100000)
        ->Complexity(benchmark::oN)
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace

int main(int argc, char** argv) {
  // The program makes its data folders below XDG_DATA_HOME; they go to a folder of this
  // run, never the user's own.
  const Bench::ScratchDataHome home("sorvel-load-bench");
  registerAll();
  return Bench::runRegistered(argc, argv);
}
