// Frame passes at 1920x1080 in the default pixel format (RGBA16F), by the draw path, the
// compute path and the path the passes choose for themselves, and a 16-layer source-over
// composition as draws, as one dispatch per layer, as one fused dispatch, on the path a
// plain copy pass would choose (one choice for every operation of the device), and on
// the path the composition chooses for itself. Each iteration runs a batch on the GPU
// thread and waits for the GPU to finish; the time per frame (ms) and the achieved
// bandwidth (the least bytes the work must read and write, per second) are reported as
// counters.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BenchRun.h"
#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"
#include "media/pass/BlendStateTable.h"
#include "media/pass/FramePassTable.h"
#include "media/pass/FramePasses.h"
#include "platform/egl_gl/GlBackend.h"


namespace {

using namespace Media;

constexpr std::uint32_t kWidth = 1920;
constexpr std::uint32_t kHeight = 1080;
constexpr std::uint32_t kLayers = 16;
constexpr int kBatch = 4;
constexpr double kBytesPerPixel = 8.0;  // RGBA16F

// The device and the buffers, made once on the GPU thread.
struct Bench {
  std::unique_ptr<GraphicsDevice> device;
  std::unique_ptr<FramePasses> passes;
  std::vector<std::unique_ptr<ResourceBuffer>> layers;
  std::unique_ptr<ResourceBuffer> target;
  std::unique_ptr<ConstantBufferCommon> constants[kFramePassCount];
  std::string failure;

  Bench() {
    try {
      device = std::make_unique<GraphicsDevice>(Platform::createGlBackend, DeviceSettings{});
    } catch (const std::exception& e) {
      failure = e.what();
      return;
    }
    device->run([this] {
      passes = std::make_unique<FramePasses>(*device, kWidth, kHeight);
      for (std::uint32_t i = 0; i < kLayers; ++i) {
        layers.push_back(std::make_unique<ResourceBuffer>(*device, kWidth, kHeight));
        const float a = 0.25f + 0.04f * static_cast<float>(i);
        layers.back()->clear({0.5f * a, 0.3f * a, 0.2f * a, a});
      }
      target = std::make_unique<ResourceBuffer>(*device, kWidth, kHeight);
      target->clear({0.1f, 0.2f, 0.3f, 1.0f});
      for (std::size_t p = 0; p < kFramePassCount; ++p) makeConstants(static_cast<FramePass>(p));
    });
  }

  // Work of the usual size: one read per source pixel, one box tap, one resize tap.
  void makeConstants(FramePass pass) {
    auto& buffer = constants[static_cast<std::size_t>(pass)];
    buffer = std::make_unique<ConstantBufferCommon>(*device);
    switch (pass) {
      case FramePass::ColorMatrixAddFirst:
      case FramePass::ColorMatrixAddLast:
        buffer->create(ColorMatrixConstants{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, {0, 0, 0, 0}});
        break;
      case FramePass::BoxX:
      case FramePass::BoxY: buffer->create(BoxConstants{1, 0}); break;
      case FramePass::Resize: buffer->create(ResizeConstants{{1, 1}}); break;
      case FramePass::Glow: buffer->create(GlowConstants{0.5f, 1, 1}); break;
      case FramePass::ExpRemap: buffer->create(ExpRemapConstants{1.5f}); break;
      case FramePass::LogRemap: buffer->create(LogRemapConstants{1 / 1.5f}); break;
      case FramePass::SoftMask: buffer->create(SoftMaskConstants{0.3f, 0.7f, {1, 1}}); break;
      case FramePass::BlendMode:
      case FramePass::BlendModeOffset: buffer->create(OutputConstants{4, 0.8f, {3, 2}}); break;
      default: buffer->create(OutputConstants{0, 0.8f, {3, 2}}); break;
    }
  }

  // Runs `work` kBatch times on the GPU thread and returns seconds per run.
  template <typename Work>
  double time(Work&& work) {
    double seconds = 0;
    device->run([&] {
      work();  // compiles what the first run needs
      device->finish();
      const auto start = std::chrono::steady_clock::now();
      for (int i = 0; i < kBatch; ++i) work();
      device->finish();
      seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / kBatch;
    });
    return seconds;
  }
};

Bench& bench() {
  static Bench instance;
  return instance;
}

// Runs `frame` once per iteration; `bytes` is what one frame must read and write.
template <typename Frame>
void measure(benchmark::State& state, double bytes, Frame&& frame) {
  double total = 0;
  for (auto _ : state) {
    const double seconds = bench().time(frame);
    state.SetIterationTime(seconds);
    total += seconds;
  }
  const auto iterations = static_cast<double>(state.iterations());
  state.counters["ms"] = total / iterations * 1e3;
  state.counters["GB/s"] = bytes * iterations / total * 1e-9;
}

// One pass under the plain source-over state: its sources and the target are read, the
// target written. No path: the one the passes choose, measured at the first run.
void framePass(benchmark::State& state, FramePass pass, std::optional<FramePassPath> path) {
  Bench& b = bench();
  if (!b.device) return state.SkipWithError(("the graphics device could not start: " + b.failure).c_str());
  PassOptions options;
  options.constants = b.constants[static_cast<std::size_t>(pass)].get();
  options.blendState = kBlendStateSourceOver;
  const double bytes = (framePassInfo(pass).sourceCount + 2) * kBytesPerPixel * kWidth * kHeight;
  measure(state, bytes, [&] {
    if (path) {
      b.passes->run(pass, *path, *b.target, {b.layers[0].get(), b.layers[1].get()}, options);
    } else {
      b.passes->run(pass, *b.target, {b.layers[0].get(), b.layers[1].get()}, options);
    }
  });
  if (!path) state.SetLabel(b.passes->chosenPath(pass) == FramePassPath::Compute ? "compute" : "draw");
}

enum class Composition { Draws, DispatchPerLayer, FusedDispatch, PathOfACopyPass, ChosenPath };

void sourceOver(benchmark::State& state, Composition how) {
  Bench& b = bench();
  if (!b.device) return state.SkipWithError(("the graphics device could not start: " + b.failure).c_str());
  std::vector<ResourceBuffer*> layers;
  for (auto& layer : b.layers) layers.push_back(layer.get());
  PassOptions options;
  options.blendState = kBlendStateSourceOver;
  const double pixels = double{kWidth} * kHeight;
  // Layer by layer each step reads a layer and the target and writes the target; fused,
  // the target is read and written once.
  const double bytes = how == Composition::FusedDispatch ? (kLayers + 2) * kBytesPerPixel * pixels
                                                         : kLayers * 3 * kBytesPerPixel * pixels;
  // A device with one choice for everything took the path a plain copy pass runs faster.
  FramePassPath copyPath = FramePassPath::Draw;
  if (how == Composition::PathOfACopyPass) {
    b.device->run([&] {
      FramePasses fresh(*b.device, kWidth, kHeight);
      fresh.run(FramePass::Copy, *b.target, {b.layers[0].get()}, options);
      copyPath = *fresh.chosenPath(FramePass::Copy);
    });
  }
  measure(state, bytes, [&] {
    switch (how) {
      case Composition::Draws: b.passes->composeSourceOver(*b.target, layers, FramePassPath::Draw); break;
      case Composition::DispatchPerLayer:
        for (ResourceBuffer* layer : layers) {
          b.passes->run(FramePass::Copy, FramePassPath::Compute, *b.target, {layer}, options);
        }
        break;
      case Composition::FusedDispatch:
        b.passes->composeSourceOver(*b.target, layers, FramePassPath::Compute);
        break;
      case Composition::PathOfACopyPass: b.passes->composeSourceOver(*b.target, layers, copyPath); break;
      case Composition::ChosenPath: b.passes->composeSourceOver(*b.target, layers); break;
    }
  });
  const auto label = [](FramePassPath path) { return path == FramePassPath::Compute ? "fused" : "draws"; };
  if (how == Composition::PathOfACopyPass) state.SetLabel(label(copyPath));
  if (how == Composition::ChosenPath) state.SetLabel(label(*b.passes->chosenCompositionPath()));
}

void registerAll() {
  for (std::size_t p = 0; p < kFramePassCount; ++p) {
    const auto pass = static_cast<FramePass>(p);
    for (const auto& [path, name] : {std::pair{std::optional{FramePassPath::Draw}, "Draw"},
                                     std::pair{std::optional{FramePassPath::Compute}, "Compute"},
                                     std::pair{std::optional<FramePassPath>{}, "Chosen"}}) {
      benchmark::RegisterBenchmark(
          ("FramePass/" + std::to_string(p) + "_" + framePassInfo(pass).name + "/" + name).c_str(),
          [pass, path = path](benchmark::State& state) { framePass(state, pass, path); })
          ->UseManualTime()
          ->Unit(benchmark::kMillisecond);
    }
  }
  for (const auto& [how, name] : {std::pair{Composition::Draws, "Draws"},
                                  std::pair{Composition::DispatchPerLayer, "DispatchPerLayer"},
                                  std::pair{Composition::FusedDispatch, "FusedDispatch"},
                                  std::pair{Composition::PathOfACopyPass, "PathOfACopyPass"},
                                  std::pair{Composition::ChosenPath, "ChosenPath"}}) {
    benchmark::RegisterBenchmark((std::string("SourceOver16Layers/") + name).c_str(),
                                 [how = how](benchmark::State& state) { sourceOver(state, how); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace

int main(int argc, char** argv) {
  registerAll();
  return Bench::runRegistered(argc, argv);
}
