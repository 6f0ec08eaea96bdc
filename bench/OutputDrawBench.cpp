// One full-HD layer drawn into a 1080p frame by the output effects: the quad scaled to
// 80 % and turned by 15 degrees (so every pixel is resampled), the same with a blend
// mode that reads a copy of the frame, and the whole-pixel copy of a direct image. Each
// iteration waits for the GPU, so the figure is milliseconds a frame.
#include <benchmark/benchmark.h>

#include <memory>

#include "BenchRun.h"
#include "edit/EditService.h"
#include "edit/Object.h"
#include "effect/output/VideoOutput.h"
#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/pass/FramePasses.h"
#include "platform/egl_gl/GlBackendFactory.h"
#include "render/ObjectContext.h"
#include "render/RenderVideoWorker.h"

namespace {

constexpr std::uint32_t kWidth = 1920;
constexpr std::uint32_t kHeight = 1080;

enum Path : std::int64_t { Quad = 0, QuadBlended = 1, Direct = 2 };

void BM_OutputDraw(benchmark::State& state) {
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
  {
    Render::RenderVideoWorker worker(*device, edit, Render::VideoWorkerSettings{kWidth * kHeight, {}, nullptr});
    worker.setFramePasses(passes.get());
    Effect::VideoOutput output;
    Render::ObjectContext context;
    context.worker = &worker;
    context.object = std::make_shared<Edit::Object>();
    Render::ObjectView view;
    const auto path = static_cast<Path>(state.range(0));
    if (path != Direct) {
      view.zoomX = view.zoomY = 0.8f;
      view.rotationZ = 15.0f;
    }
    if (path == QuadBlended) view.blend = 4;  // スクリーン
    std::unique_ptr<Media::RenderBuffer> target;
    std::unique_ptr<Media::ResourceBuffer> image;
    device->run([&] {
      target = std::make_unique<Media::RenderBuffer>(*device, kWidth, kHeight);
      image = std::make_unique<Media::ResourceBuffer>(*device, kWidth, kHeight);
      image->clear({0.25f, 0.5f, 0.125f, 0.5f});
    });
    const auto draw = [&] {
      device->run([&] {
        target->clear({0.0f, 0.0f, 0.0f, 1.0f});
        if (path == Direct) {
          output.drawDirect(context, view, *target, *image);
        } else {
          output.drawImage(context, view, *target, *image);
        }
        device->finish();
      });
    };
    draw();  // shaders, the quad and the frame copy are made here, the pass paths measured
    for (auto _ : state) draw();
    device->run([&] {
      target.reset();
      image.reset();
    });
    worker.stop();
  }
  state.SetItemsProcessed(state.iterations());
  device->run([&] { passes.reset(); });
}

BENCHMARK(BM_OutputDraw)->ArgName("path")->Arg(Quad)->Arg(QuadBlended)->Arg(Direct)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  const Bench::ScratchDataHome scratch("sorvel-output-draw-bench");
  return Bench::runRegistered(argc, argv);
}
