#include "media/pass/FramePasses.h"

#include <algorithm>
#include <chrono>

#include "media/ComputeShader.h"
#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"
#include "media/pass/BlendStateTable.h"
#include "media/pass/FramePassGlsl.h"
#include "media/pass/FramePassShaders.h"

namespace Media {

namespace {

// Runs of each path that a measurement times, after one that compiles and warms up.
constexpr int kMeasuredRuns = 3;

std::uint32_t groups(std::uint32_t pixels) noexcept { return (pixels + kFramePassGroupSize - 1) / kFramePassGroupSize; }

}  // namespace

FramePasses::FramePasses(GraphicsDevice& device, std::uint32_t measureWidth, std::uint32_t measureHeight)
    : device_(&device), measureWidth_(measureWidth), measureHeight_(measureHeight) {}

FramePasses::~FramePasses() = default;

PixelShader& FramePasses::pixelShader(FramePass pass) {
  std::unique_ptr<PixelShader>& shader = pixelShaders_[static_cast<std::size_t>(pass)];
  if (!shader) {
    shader = std::make_unique<PixelShader>(*device_);
    shader->load(framePassPixelShader(pass));
  }
  return *shader;
}

PixelShader& FramePasses::pixelShader(FramePass pass, TexelLayout sources, TexelLayout target) {
  if (sources == TexelLayout::Rgba && target == TexelLayout::Rgba) return pixelShader(pass);
  std::unique_ptr<PixelShader>& shader = layoutShaders_[{pass, sources, target}];
  if (!shader) {
    shader = std::make_unique<PixelShader>(*device_);
    shader->load(framePassPixelShader(pass, sources, target));
  }
  return *shader;
}

ComputeShader& FramePasses::computeShader(FramePass pass, std::size_t blendState) {
  std::unique_ptr<ComputeShader>& shader = computeShaders_[{pass, blendState}];
  if (!shader) {
    shader = std::make_unique<ComputeShader>(*device_);
    shader->load(framePassComputeShader(pass, static_cast<std::uint32_t>(blendState)));
  }
  return *shader;
}

ComputeShader& FramePasses::sourceOverShader(std::uint32_t layerCount) {
  std::unique_ptr<ComputeShader>& shader = sourceOverShaders_.at(layerCount - 1);
  if (!shader) {
    shader = std::make_unique<ComputeShader>(*device_);
    shader->load(sourceOverComputeShader(layerCount));
  }
  return *shader;
}

bool FramePasses::computable(Format format) noexcept {
  return format == Format::Rgba16Float || format == Format::R32Float || format == Format::Rg32Float;
}

std::optional<FramePassPath> FramePasses::chosenPath(FramePass pass) const noexcept {
  return paths_[static_cast<std::size_t>(pass)];
}

void FramePasses::choosePath(FramePass pass, FramePassPath path) noexcept {
  paths_[static_cast<std::size_t>(pass)] = path;
}

template <class Work>
FramePassPath FramePasses::measure(Format format, Work work) {
  ResourceBuffer scratch(*device_, measureWidth_, measureHeight_, format);
  scratch.clear({0.0f, 0.0f, 0.0f, 1.0f});
  const auto time = [&](FramePassPath path) {
    work(scratch, path);
    device_->finish();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kMeasuredRuns; ++i) work(scratch, path);
    device_->finish();
    return std::chrono::steady_clock::now() - start;
  };
  const auto draw = time(FramePassPath::Draw);
  const auto compute = time(FramePassPath::Compute);
  return compute < draw ? FramePassPath::Compute : FramePassPath::Draw;
}

void FramePasses::run(FramePass pass, PassTarget target, std::initializer_list<ResourceBuffer*> sources,
                      const PassOptions& options) {
  std::optional<FramePassPath>& path = paths_[static_cast<std::size_t>(pass)];
  if (!computable(target.format())) return pixelShader(pass).draw(target, sources, options);
  if (!path) {
    path = measure(target.format(), [&](ResourceBuffer& scratch, FramePassPath candidate) {
      run(pass, candidate, scratch, sources, options);
    });
  }
  run(pass, *path, target, sources, options);
}

void FramePasses::run(FramePass pass, FramePassPath path, PassTarget target,
                      std::initializer_list<ResourceBuffer*> sources, const PassOptions& options) {
  if (path == FramePassPath::Compute && computable(target.format())) {
    dispatch(pass, target, sources, options);
  } else {
    pixelShader(pass).draw(target, sources, options);
  }
}

void FramePasses::dispatch(FramePass pass, PassTarget target, std::initializer_list<ResourceBuffer*> sources,
                           const PassOptions& options) {
  const std::size_t state = options.blendState.value_or(kBlendStateNone);
  ComputeShader& shader = computeShader(pass, state);
  const ConstantBufferCommon* factorBuffer = nullptr;
  if (blendStateUsesFactor(static_cast<std::uint32_t>(state))) {
    const Color factor = options.blendFactor.value_or(Color{1.0f, 1.0f, 1.0f, 1.0f});
    if (!blendFactor_) {
      blendFactor_ = std::make_unique<ConstantBufferCommon>(*device_);
      blendFactor_->create(factor);
    } else {
      blendFactor_->update(factor.data());
    }
    factorBuffer = blendFactor_.get();
  }
  target.setComputeTarget(*device_, 0);
  shader.dispatch(groups(target.width()), groups(target.height()), 1, sources, {options.constants, factorBuffer});
}

void FramePasses::composeSourceOver(PassTarget target, std::span<ResourceBuffer* const> layers) {
  if (layers.empty()) return;
  if (!computable(target.format())) return composeSourceOver(target, layers, FramePassPath::Draw);
  if (!compositionPath_) {
    compositionPath_ = measure(target.format(), [&](ResourceBuffer& scratch, FramePassPath candidate) {
      composeSourceOver(scratch, layers, candidate);
    });
  }
  composeSourceOver(target, layers, *compositionPath_);
}

void FramePasses::composeSourceOver(PassTarget target, std::span<ResourceBuffer* const> layers, FramePassPath path) {
  if (path == FramePassPath::Draw || !computable(target.format())) {
    PassOptions options;
    options.blendState = kBlendStateSourceOver;
    for (ResourceBuffer* layer : layers) pixelShader(FramePass::Copy).draw(target, {layer}, options);
    return;
  }
  GraphicsBackend& backend = device_->backend();
  target.setComputeTarget(*device_, 0);
  while (!layers.empty()) {
    const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(layers.size(), kMaxFusedLayers));
    for (std::uint32_t unit = 0; unit < count; ++unit) backend.bindTexture(unit, layers[unit]->texture());
    sourceOverShader(count).dispatch(groups(target.width()), groups(target.height()), 1);
    for (std::uint32_t unit = 0; unit < count; ++unit) backend.bindTexture(unit, 0);
    layers = layers.subspan(count);
  }
}

}  // namespace Media
