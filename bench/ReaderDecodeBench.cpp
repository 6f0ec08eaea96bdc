// Frames a second that the AVI reader hands over at 1920x1080, read in order as the
// player reads them: an uncompressed 24-bit stream (a file read and a row flip a frame)
// and an MJPEG stream decoded by libavcodec to YUY2. The files are made here, in a
// folder of this run. Frames a second are counted in processor time of the reading
// thread (a reader decodes on the caller's thread alone), so a busy machine changes
// them little.
//
//   build/bin/sorvel_reader_bench --benchmark_min_time=2
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "BenchRun.h"
#include "media/image/ImageBuffer.h"
#include "plugin/AviFileReader.h"
#include "plugin/InputFile.h"
#include "support/FfmpegEncode.h"
#include "support/MediaFiles.h"


namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kFrames = 24;

// A diagonal ramp that moves a little each frame, so no two frames are alike.
std::uint8_t luma(int frame, int x, int y) { return static_cast<std::uint8_t>((x + y + frame * 8) / 12); }

std::filesystem::path uncompressedAvi() {
  PluginTest::AviContent content;
  content.width = kWidth;
  content.height = kHeight;
  content.bits = 24;
  for (int frame = 0; frame < kFrames; ++frame) {
    std::string pixels(std::size_t{kWidth} * 3 * kHeight, '\0');
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      pixels[i] = static_cast<char>(luma(frame, static_cast<int>(i / 3 % kWidth), static_cast<int>(i / 3 / kWidth)));
    }
    content.frames.emplace_back(std::move(pixels));
  }
  const std::filesystem::path path = Bench::scratchFolder() / "uncompressed.avi";
  std::ofstream(path, std::ios::binary) << PluginTest::makeAvi(content);
  return path;
}

std::filesystem::path mjpegAvi() {
  PluginTest::AviContent content;
  content.width = kWidth;
  content.height = kHeight;
  content.bits = 24;
  content.handler = content.compression = "MJPG";
  // Quantiser 4: about the quality of a camera's MJPEG.
  for (PluginTest::EncodedChunk& picture : PluginTest::encodeVideo("mjpeg", kWidth, kHeight, kFrames, luma, 4)) {
    content.frames.emplace_back(std::move(picture.data));
  }
  const std::filesystem::path path = Bench::scratchFolder() / "mjpeg.avi";
  std::ofstream(path, std::ios::binary) << PluginTest::makeAvi(content);
  return path;
}

void readInOrder(benchmark::State& state, const std::filesystem::path& path) {
  Plugin::AviFileReader reader;
  const auto file = reader.open(path.wstring(), 0);
  if (!file) {
    state.SkipWithError("the generated file did not open");
    return;
  }
  std::int32_t frame = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(file->readVideo(frame));
    frame = (frame + 1) % file->frameCount;
  }
  state.counters["fps"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  state.SetLabel(Media::ImageBuffer::formatName(file->pixelFormat));
}

}  // namespace

int main(int argc, char** argv) {
  const Bench::ScratchDataHome home("sorvel-reader-bench");
  const std::filesystem::path uncompressed = uncompressedAvi();
  const std::filesystem::path mjpeg = mjpegAvi();
  benchmark::RegisterBenchmark("AviRead/Uncompressed24Bit1080p",
                               [&](benchmark::State& state) { readInOrder(state, uncompressed); })
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("AviRead/Mjpeg1080p", [&](benchmark::State& state) { readInOrder(state, mjpeg); })
      ->Unit(benchmark::kMillisecond);
  return Bench::runRegistered(argc, argv);
}
