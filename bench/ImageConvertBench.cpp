// What a 1920x1080 frame costs on its way in and out of the GPU, for YUY2 (a decoded
// video frame) and BGRA (a picture, an export): the upload alone and with its conversion
// into the frame's format (RGBA16F), and the read-back with its conversion, next to a
// plain read of the frame as it is, and an upload and a read that leave the reordering
// or the format conversion to the driver, which is what the conversions avoid. Each
// iteration is one frame, timed on the calling thread until its pixels are where they
// are going.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <memory>
#include <string>

#include "media/CpuAccessBuffer.h"
#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ResourceConvert.h"
#include "media/image/YUVformat.h"
#include "media/pass/FramePasses.h"
#include "platform/egl_gl/GlBackend.h"
#include "system/IniFile.h"

namespace {

using namespace Media;

constexpr std::uint32_t kWidth = 1920;
constexpr std::uint32_t kHeight = 1080;

struct Bench {
  std::unique_ptr<GraphicsDevice> device;
  System::IniFile systemFile;
  std::unique_ptr<YUVformat> colors;
  std::unique_ptr<FramePasses> passes;
  std::unique_ptr<ResourceConvert> convert;
  std::unique_ptr<RenderBuffer> frame;
  std::string failure;

  Bench() {
    try {
      device = std::make_unique<GraphicsDevice>(Platform::createGlBackend, DeviceSettings{});
      systemFile.loadFile(L"" SORVEL_SOURCE_DIR "/data/system.conf");
      colors = std::make_unique<YUVformat>(systemFile);
    } catch (const std::exception& e) {
      failure = e.what();
      device.reset();
      return;
    }
    device->run([this] { passes = std::make_unique<FramePasses>(*device, kWidth, kHeight); });
    convert = std::make_unique<ResourceConvert>(*device, *passes, *colors, ConvertParameters{});
    frame = std::make_unique<RenderBuffer>(*device, kWidth, kHeight);
    const std::shared_ptr<const ImageBuffer> picture = image(Format::Bgra8Unorm);
    ResourceBuffer content(*convert, *picture, {});
    device->run([&] { passes->pixelShader(FramePass::Copy).draw(*frame, {&content}); });
  }

  // A frame of `format` whose bytes vary, so no path can take a shortcut on them.
  static std::shared_ptr<const ImageBuffer> image(Format format) {
    auto result = std::make_shared<ImageBuffer>(format, kWidth, kHeight);
    for (std::uint32_t y = 0; y < kHeight; ++y) {
      auto* row = reinterpret_cast<std::uint8_t*>(result->row(y));
      for (std::uint32_t i = 0; i < result->pitch(); ++i) row[i] = static_cast<std::uint8_t>(i * 7 + y * 13);
    }
    return result;
  }
};

Bench& bench() {
  static Bench instance;
  return instance;
}

// Times `work` once per iteration, the GPU drained after it; reports ms per frame.
template <typename Work>
void measure(benchmark::State& state, Work&& work) {
  Bench& b = bench();
  if (!b.device) return state.SkipWithError(("the graphics device could not start: " + b.failure).c_str());
  work();  // compiles and measures what the first frame needs
  double total = 0;
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    work();
    b.device->run([&] { b.device->finish(); });
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    state.SetIterationTime(seconds);
    total += seconds;
  }
  state.counters["ms"] = total / static_cast<double>(state.iterations()) * 1e3;
}

// The image's bytes into a texture of `texture` format: as they lie (the upload alone,
// as the conversion makes it), or, for BGRA into its own format, reordered by the driver.
void upload(benchmark::State& state, Format format, Format texture) {
  const std::shared_ptr<const ImageBuffer> picture = Bench::image(format);
  measure(state, [&] {
    ResourceBuffer buffer(*bench().device, kWidth, kHeight, texture, picture->data(), picture->pitch());
    bench().device->run([&] { buffer.texture(); });
  });
}

// Into the frame's format: the upload and the pass that converts.
void uploadAndConvert(benchmark::State& state, Format format) {
  const std::shared_ptr<const ImageBuffer> picture = Bench::image(format);
  measure(state, [&] { ResourceBuffer frame(*bench().convert, *picture, {}); });
}

// Out of the frame's format: the pass, the read-back and the copy into a CPU image.
void readBackAndConvert(benchmark::State& state, Format format) {
  measure(state, [&] { benchmark::DoNotOptimize(bench().frame->toImageBuffer(*bench().convert, format, true)); });
}

// The frame read as it is, 8 bytes a pixel: no conversion anywhere.
void readBackAsItIs(benchmark::State& state) {
  measure(state, [&] { benchmark::DoNotOptimize(bench().frame->toImageBuffer()); });
}

// The frame read as 8-bit BGRA by the driver, converting while it copies.
void readBackConvertedByTheDriver(benchmark::State& state) {
  Bench& b = bench();
  measure(state, [&] {
    CpuAccessBuffer staging(*b.device, kWidth, kHeight, Format::Bgra8Unorm);
    b.device->run([&] { staging.copyResource(b.frame->texture()); });
    ImageBuffer image(Format::Bgra8Unorm, kWidth, kHeight);
    staging.copyTo(image.data(), image.pitch());
  });
}

template <typename... Arguments>
void add(const std::string& name, void (*run)(benchmark::State&, Arguments...), Arguments... arguments) {
  benchmark::RegisterBenchmark(name.c_str(), run, arguments...)->UseManualTime()->Unit(benchmark::kMillisecond);
}

void registerAll() {
  add("Frame1080p/YUY2/Upload", upload, Format::Yuy2, Format::Yuy2);
  add("Frame1080p/BGRA/Upload", upload, Format::Bgra8Unorm, Format::Rgba8Unorm);
  add("Frame1080p/BGRA/UploadConvertedByTheDriver", upload, Format::Bgra8Unorm, Format::Bgra8Unorm);
  for (const auto& [format, name] : {std::pair{Format::Yuy2, "YUY2"}, std::pair{Format::Bgra8Unorm, "BGRA"}}) {
    const std::string prefix = std::string("Frame1080p/") + name;
    add(prefix + "/UploadAndConvert", uploadAndConvert, format);
    add(prefix + "/ReadBackAndConvert", readBackAndConvert, format);
  }
  add("Frame1080p/RGBA16F/ReadBackAsItIs", readBackAsItIs);
  add("Frame1080p/BGRA/ReadBackConvertedByTheDriver", readBackConvertedByTheDriver);
}

// Registered before main runs, so the library's own main serves.
const bool registered = (registerAll(), true);

}  // namespace

BENCHMARK_MAIN();
