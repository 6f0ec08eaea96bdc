// What the image cache costs around its loads: a hit, find(), and a miss, through a
// loader that makes a 1920x1080 BGRA frame in memory (once with its pixels written, once
// a 1x1 image, which leaves the cache's own hand-over to its worker and back), and
// through the service with the BMP reader on a 1080p file made in a folder of this run.
// A miss is a get on a cache whose limit is 0: every get loads on the cache's worker and
// the caller waits, as the render thread does for a frame it did not ask for ahead.
//
//   build/bin/sorvel_cache_bench --benchmark_min_time=0.5
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "BenchRun.h"
#include "cache/CacheInstance.h"
#include "media/image/ImageBuffer.h"
#include "plugin/ImageFileReader.h"
#include "plugin/InputService.h"
#include "support/MediaFiles.h"
#include "system/IniFile.h"

namespace {

using ImageCache = Cache::CacheInstance::ImageCache;

constexpr std::uint32_t kWidth = 1920;
constexpr std::uint32_t kHeight = 1080;
const Cache::ImageCacheKey kKey{L"/media/clip.avi", 120};

std::shared_ptr<Media::ImageBuffer> frame(std::uint32_t width, std::uint32_t height, bool written) {
  auto image = std::make_shared<Media::ImageBuffer>(Media::Format::Bgra8Unorm, width, height);
  if (written) image->clear();
  return image;
}

void hit(benchmark::State& state) {
  ImageCache cache(Cache::CacheInstance::kQueueBound);
  cache.setLimit(768);
  cache.put(kKey, frame(kWidth, kHeight, true), std::uint64_t{kWidth} * kHeight * 4);
  const ImageCache::Loader never = [] {};
  for (auto _ : state) benchmark::DoNotOptimize(cache.get(kKey, never));
}

void find(benchmark::State& state) {
  ImageCache cache(Cache::CacheInstance::kQueueBound);
  cache.setLimit(768);
  cache.put(kKey, frame(kWidth, kHeight, true), std::uint64_t{kWidth} * kHeight * 4);
  for (auto _ : state) benchmark::DoNotOptimize(cache.find(kKey));
}

void missInMemory(benchmark::State& state, std::uint32_t width, std::uint32_t height, bool written) {
  ImageCache cache(Cache::CacheInstance::kQueueBound);
  cache.setLimit(0);
  const ImageCache::Loader load = [&] {
    std::shared_ptr<Media::ImageBuffer> image = frame(width, height, written);
    const std::uint64_t size = image->size();
    cache.put(kKey, std::move(image), size);
  };
  for (auto _ : state) benchmark::DoNotOptimize(cache.get(kKey, load));
}

std::filesystem::path bmp1080p() {
  const std::vector<std::string> rows(kHeight, std::string(std::size_t{kWidth} * 4, '\x40'));
  const std::filesystem::path path = Bench::scratchFolder() / "still.bmp";
  std::ofstream(path, std::ios::binary) << PluginTest::makeBmp(kWidth, kHeight, 32, rows);
  return path;
}

void missThroughReader(benchmark::State& state, const std::filesystem::path& path) {
  System::IniFile ini;
  ini.value("Cache", "ImageCacheSize").setInt(0);
  Plugin::InputService input(&ini);
  input.registerPlugin(std::make_shared<Plugin::ImageFileReader>());
  input.updateExtTypeList();
  Cache::CacheInstance::Services services;
  services.ini = &ini;
  services.input = &input;
  Cache::CacheInstance cache(services);
  if (!cache.getImageFile(path.wstring())) {
    state.SkipWithError("the generated picture did not open");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(cache.getImageFile(path.wstring()));
}

}  // namespace

int main(int argc, char** argv) {
  const Bench::ScratchDataHome home("sorvel-cache-bench");
  const std::filesystem::path still = bmp1080p();
  benchmark::RegisterBenchmark("ImageCache/Hit", hit);
  benchmark::RegisterBenchmark("ImageCache/Find", find);
  benchmark::RegisterBenchmark("ImageCache/MissHandOver1x1",
                               [](benchmark::State& state) { missInMemory(state, 1, 1, false); })
      ->UseRealTime();
  benchmark::RegisterBenchmark("ImageCache/MissBgra1080pInMemory",
                               [](benchmark::State& state) { missInMemory(state, kWidth, kHeight, true); })
      ->UseRealTime()
      ->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark("ImageCache/MissBmp1080pReader",
                               [&](benchmark::State& state) { missThroughReader(state, still); })
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
  return Bench::runRegistered(argc, argv);
}
