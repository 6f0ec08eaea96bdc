// Frames of 1, 4 and 16 full-frame layers at 1920x1080, composed by the render worker's
// walk through effects made here (an input cleared to one colour on the GPU, an output
// that lays it over the frame source-over), on OpenGL: llvmpipe where no GPU is present.
// Reported: milliseconds a frame; the walk's own work on the render thread (its thread
// CPU time, walk_cpu_ms); and how long the walk took from start to end (walk_ms), which
// once the GPU falls behind is mostly the walker waiting for room in the queue of 8.
#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>
#include <memory>

#include "BenchRun.h"
#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/pass/FramePasses.h"
#include "platform/egl_gl/GlBackend.h"
#include "render/ObjectContext.h"
#include "render/RenderSection.h"
#include "render/RenderVideoWorker.h"

namespace {

using Effect::EffectMedia;
using Effect::EffectType;
using Render::RenderVideoWorker;

constexpr std::int32_t kWidth = 1920;
constexpr std::int32_t kHeight = 1080;

class Fill final : public Effect::EffectInstance<Fill> {
 public:
  static const Effect::EffectInfo kInfo;
  Fill() : EffectInstance(kInfo) {}
  std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context) override {
    auto image = std::make_unique<Media::ResourceBuffer>(context.worker->device(), kWidth, kHeight);
    image->clear(Media::Color{0.1f, 0.2f, 0.3f, 0.5f});
    return image;
  }
};
const Effect::EffectInfo Fill::kInfo{L"bench fill", EffectType::Input, EffectMedia::Video, EffectMedia::Video, L"", {}};

class Over final : public Effect::EffectInstance<Over> {
 public:
  static const Effect::EffectInfo kInfo;
  Over() : EffectInstance(kInfo) {}
  void outputVideo(Render::ObjectContext& context, Media::RenderBuffer& target, Media::ResourceBuffer& image) override {
    Media::PassOptions sourceOver;
    sourceOver.blendState = 0;
    context.worker->framePasses()->run(Media::FramePass::Copy, target, {&image}, sourceOver);
  }
};
const Effect::EffectInfo Over::kInfo{L"bench over", EffectType::Output, EffectMedia::Video, EffectMedia::Video, L"", {}};

void BM_FrameAssembly(benchmark::State& state) {
  std::unique_ptr<Media::GraphicsDevice> device;
  try {
    device = std::make_unique<Media::GraphicsDevice>(Platform::createGlBackend, Media::DeviceSettings{});
  } catch (const std::exception& failure) {
    state.SkipWithError(failure.what());
    return;
  }
  std::unique_ptr<Media::FramePasses> passes;
  device->run([&] { passes = std::make_unique<Media::FramePasses>(*device, kWidth, kHeight); });
  Edit::EditService edit;
  const std::shared_ptr<Edit::Scene> scene = edit.currentScene();
  scene->width = kWidth;
  scene->height = kHeight;
  for (std::int32_t layer = 0; layer < state.range(0); ++layer) {
    Edit::Object& object = *scene->createEmptyObject(layer, 0, 1000);
    object.effects.push_back(std::make_shared<Fill>());
    object.effects.push_back(std::make_shared<Over>());
  }
  scene->update();
  std::chrono::steady_clock::duration walking{};
  double walkingCpu = 0.0;  // seconds
  {
    RenderVideoWorker worker(*device, edit, Render::VideoWorkerSettings{kWidth * kHeight, {}, nullptr});
    worker.setFramePasses(passes.get());
    worker.setLayerWalk([&](RenderVideoWorker& walker, const Render::SectionArguments& arguments) {
      timespec cpuStart{}, cpuEnd{};
      clock_gettime(CLOCK_THREAD_CPUTIME_ID, &cpuStart);
      const auto start = std::chrono::steady_clock::now();
      const Render::RenderSection walk(walker, arguments);
      walking += std::chrono::steady_clock::now() - start;
      clock_gettime(CLOCK_THREAD_CPUTIME_ID, &cpuEnd);
      walkingCpu += static_cast<double>(cpuEnd.tv_sec - cpuStart.tv_sec) + (cpuEnd.tv_nsec - cpuStart.tv_nsec) * 1e-9;
    });
    const auto draw = [&](std::int32_t frame) {
      worker.requestRenderingFrame(RenderVideoWorker::Single, frame, [&](std::int32_t, Media::RenderBuffer&, Anchor::AnchorList&) {});
      worker.waitRendering();
    };
    draw(0);  // the passes measure their paths here
    walking = {};
    walkingCpu = 0.0;
    std::int32_t frame = 0;
    for (auto _ : state) draw(++frame % 1000);
    worker.stop();
  }
  const double frames = static_cast<double>(state.iterations());
  state.counters["walk_ms"] = std::chrono::duration<double, std::milli>(walking).count() / frames;
  state.counters["walk_cpu_ms"] = walkingCpu * 1000.0 / frames;
  state.SetItemsProcessed(state.iterations());
  device->run([&] { passes.reset(); });
}

BENCHMARK(BM_FrameAssembly)->Arg(1)->Arg(4)->Arg(16)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  const Bench::ScratchDataHome scratch("sorvel-frame-assembly-bench");
  return Bench::runRegistered(argc, argv);
}
