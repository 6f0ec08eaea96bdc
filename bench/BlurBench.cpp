// ぼかし on a 1920x1080 RGBA16F image at radii 4, 32 and 256, in mode 0 (the image
// grows), by the pixel-shader form and the running-sum compute form each forced, and by
// the form the device chose by measuring (its crossing radius in the label). Each iteration blurs a batch of fresh images on
// the GPU thread and waits for the GPU; the inputs are made before the clock starts, so
// the time is the filter's: its passes and the new image of the grown size it hands on.
// Reported as milliseconds a frame.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BenchRun.h"
#include "effect/filter/BokashiFilter.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"
#include "platform/egl_gl/GlBackend.h"

namespace {

using namespace Media;

constexpr std::uint32_t kWidth = 1920;
constexpr std::uint32_t kHeight = 1080;
constexpr int kBatch = 3;

struct Bench {
  std::unique_ptr<GraphicsDevice> device;
  std::unique_ptr<Effect::BokashiFilter> filter;
  std::string failure;

  Bench() {
    try {
      device = std::make_unique<GraphicsDevice>(Platform::createGlBackend, DeviceSettings{});
    } catch (const std::exception& e) {
      failure = e.what();
      return;
    }
    filter = std::make_unique<Effect::BokashiFilter>();
  }
  ~Bench() {
    if (device) device->run([this] { filter.reset(); });
  }

  std::vector<std::unique_ptr<ResourceBuffer>> inputs(int count) {
    std::vector<std::unique_ptr<ResourceBuffer>> images;
    device->run([&] {
      for (int i = 0; i < count; ++i) {
        images.push_back(std::make_unique<ResourceBuffer>(*device, kWidth, kHeight));
        images.back()->clear({0.4f, 0.3f, 0.2f, 0.8f});
      }
      device->finish();
    });
    return images;
  }
};

Bench& bench() {
  static Bench instance;
  return instance;
}

void blur(benchmark::State& state, std::int32_t radius, std::optional<BlurForm> form) {
  Bench& b = bench();
  if (!b.device) return state.SkipWithError(("the graphics device could not start: " + b.failure).c_str());
  const Effect::BokashiFilter::Settings settings{radius, 0.0, 0, false};
  double total = 0;
  for (auto _ : state) {
    std::vector<std::unique_ptr<ResourceBuffer>> images = b.inputs(kBatch + 1);
    double seconds = 0;
    b.device->run([&] {
      b.filter->boxBlurFor(*b.device).forceForm(form);
      // The first frame compiles the shaders and fills the store of kept images.
      b.filter->apply(nullptr, std::move(images[0]), settings);
      b.device->finish();
      const auto start = std::chrono::steady_clock::now();
      for (int i = 1; i <= kBatch; ++i) b.filter->apply(nullptr, std::move(images[i]), settings);
      b.device->finish();
      seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / kBatch;
    });
    state.SetIterationTime(seconds);
    total += seconds;
  }
  state.counters["ms"] = total / static_cast<double>(state.iterations()) * 1e3;
  if (!form) {
    double crossing = 0.0;
    b.device->run([&] { crossing = b.filter->boxBlurFor(*b.device).crossing(); });
    state.SetLabel((blurFormFor({radius, radius}, crossing) == BlurForm::Compute ? "compute" : "pixel") +
                   std::string(", crossing ") + std::to_string(static_cast<int>(crossing)));
  }
}

void registerAll() {
  for (const std::int32_t radius : {4, 32, 256}) {
    for (const auto& [form, name] : {std::pair{std::optional<BlurForm>{BlurForm::Pixel}, "Pixel"},
                                     std::pair{std::optional<BlurForm>{BlurForm::Compute}, "Compute"},
                                     std::pair{std::optional<BlurForm>{}, "Chosen"}}) {
      benchmark::RegisterBenchmark(("Bokashi1080p/" + std::to_string(radius) + "/" + name).c_str(),
                                   [radius = radius, form = form](benchmark::State& state) { blur(state, radius, form); })
          ->UseManualTime()
          ->Iterations(2)
          ->Unit(benchmark::kMillisecond);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  registerAll();
  return Bench::runRegistered(argc, argv);
}
