// Built-in figures drawn through Qt at the sizes 図形 meets: filled and stroked, at 256
// and 1080 pixels square, and a monochrome SVG file read, recoloured and drawn at 1080.
// Each iteration makes the whole image the figure effect receives (16-bit RGBA,
// premultiplied), as a render thread does on a cache miss.
#include <benchmark/benchmark.h>

#include <fstream>
#include <memory>
#include <string>

#include "BenchRun.h"
#include "media/figure/FigureResource.h"
#include "media/image/ImageBuffer.h"
#include "platform/qt/QtFigureRasterizer.h"

namespace {

Resource::FigureResource& figures() {
  static std::unique_ptr<Resource::FigureResource> resource = [] {
    Resource::FigureResource::setRasterizerFactory(Platform::createQtFigureRasterizer);
    return std::make_unique<Resource::FigureResource>();
  }();
  return *resource;
}

void drawFigure(benchmark::State& state, const wchar_t* name, float lineWidth) {
  const Resource::Figure figure = figures().find(name);
  const auto size = static_cast<std::uint32_t>(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(figures().draw(figure, size, size, {1.0f, 0.5f, 0.25f, 1.0f}, lineWidth, false));
  }
  state.SetItemsProcessed(state.iterations() * size * size);
}

void drawSvg(benchmark::State& state) {
  const std::string path = (Bench::scratchFolder() / "star.svg").string();
  std::ofstream(path) << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 100 100'>"
                         "<path d='M50 5 L61 38 L95 38 L68 59 L79 92 L50 72 L21 92 L32 59 L5 38 L39 38 Z' "
                         "fill='#000000'/><circle cx='50' cy='50' r='10' fill='#000000'/></svg>";
  const std::wstring file(path.begin(), path.end());
  for (auto _ : state) {
    benchmark::DoNotOptimize(figures().drawFile(file, 1080, 1080, {0.0f, 0.5f, 1.0f, 1.0f}));
  }
}

BENCHMARK_CAPTURE(drawFigure, CircleFilled, L"円", 0.0f)->Arg(256)->Arg(1080)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFigure, StarStroked, L"星型", 12.0f)->Arg(256)->Arg(1080)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFigure, HeartFilled, L"ハート", 0.0f)->Arg(1080)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFigure, Background, L"背景", 0.0f)->Arg(1080)->Unit(benchmark::kMillisecond);
BENCHMARK(drawSvg)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  Bench::ScratchDataHome home("sorvel2-figure-bench");
  return Bench::runRegistered(argc, argv);
}
