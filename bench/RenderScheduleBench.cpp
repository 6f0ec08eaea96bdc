// What the render worker costs around the drawing itself: frames a second for scenes
// with nothing on them (request, scene reader, the frame's clear, the barrier and the
// callback), on the recording back end (pure scheduling) and on OpenGL (with the clear
// of a 1920x1080 frame); the cost of one object task through the bounded queue onto the
// GPU thread; and, as the floor that every frame pays at least once, one plain round
// trip to the GPU thread.
#include <benchmark/benchmark.h>

#include <memory>

#include "BenchRun.h"
#include "edit/EditService.h"
#include "media/DeviceFakeBackend.h"
#include "media/GraphicsDevice.h"
#include "platform/egl_gl/GlBackend.h"
#include "render/RenderVideoWorker.h"

namespace {

using Render::RenderVideoWorker;

constexpr int kBatch = 32;
constexpr int kObjectsPerFrame = 64;

std::unique_ptr<Media::GraphicsDevice> makeDevice(bool opengl) {
  if (opengl) return std::make_unique<Media::GraphicsDevice>(Platform::createGlBackend, Media::DeviceSettings{});
  return std::make_unique<Media::GraphicsDevice>([] { return std::make_unique<MediaTest::FakeBackend>(); },
                                                 Media::DeviceSettings{});
}

// Batches of single-frame requests, waited for together, as an export queues them.
void renderFrames(benchmark::State& state, bool opengl, int objectsPerFrame) {
  std::unique_ptr<Media::GraphicsDevice> device;
  try {
    device = makeDevice(opengl);
  } catch (const std::exception& failure) {
    state.SkipWithError(failure.what());
    return;
  }
  Edit::EditService edit;
  RenderVideoWorker worker(*device, edit, Render::VideoWorkerSettings{1920 * 1080, {}, nullptr});
  worker.setLayerWalk([objectsPerFrame](RenderVideoWorker& walker, const Render::SectionArguments&) {
    for (int i = 0; i < objectsPerFrame; ++i) walker.postObjectTask([] {});
  });
  for (auto _ : state) {
    for (int i = 0; i < kBatch; ++i) {
      worker.requestRenderingFrame(RenderVideoWorker::Single, i, [](std::int32_t, Media::RenderBuffer&, Anchor::AnchorList&) {});
    }
    worker.waitRendering();
  }
  // Items are frames: items_per_second is frames a second.
  state.SetItemsProcessed(state.iterations() * kBatch);
}

void BM_EmptyFramesRecording(benchmark::State& state) { renderFrames(state, false, 0); }
void BM_EmptyFramesOpenGl(benchmark::State& state) { renderFrames(state, true, 0); }
void BM_FramesOf64EmptyObjectsRecording(benchmark::State& state) { renderFrames(state, false, kObjectsPerFrame); }

void BM_GpuThreadRoundTrip(benchmark::State& state) {
  const auto device = makeDevice(false);
  for (auto _ : state) device->run([] {});
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_EmptyFramesRecording)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_EmptyFramesOpenGl)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_FramesOf64EmptyObjectsRecording)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GpuThreadRoundTrip)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  const Bench::ScratchDataHome scratch("sorvel-render-bench");
  return Bench::runRegistered(argc, argv);
}
