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

std::uint32_t groups(std::uint32_t pixels) noexcept { return (pixels + kFramePassGroupSize - 1) / kFramePassGroupSize; }

}  // namespace

FramePasses::FramePasses(GraphicsDevice& device) : device_(&device) {}

FramePasses::~FramePasses() = default;

PixelShader& FramePasses::pixelShader(FramePass pass) {
  std::unique_ptr<PixelShader>& shader = pixelShaders_[static_cast<std::size_t>(pass)];
  if (!shader) {
    shader = std::make_unique<PixelShader>(*device_);
    shader->load(framePassPixelShader(pass));
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

bool FramePasses::computable(const ResourceBuffer& target) const noexcept {
  const Format format = target.format();
  return format == Format::Rgba16Float || format == Format::R32Float || format == Format::Rg32Float;
}

void FramePasses::run(FramePass pass, ResourceBuffer& target, std::initializer_list<ResourceBuffer*> sources,
                      const PassOptions& options) {
  run(pass, path_, target, sources, options);
}

void FramePasses::run(FramePass pass, FramePassPath path, ResourceBuffer& target,
                      std::initializer_list<ResourceBuffer*> sources, const PassOptions& options) {
  if (path == FramePassPath::Compute && computable(target)) {
    dispatch(pass, target, sources, options);
  } else {
    pixelShader(pass).draw(target, sources, options);
  }
}

void FramePasses::dispatch(FramePass pass, ResourceBuffer& target, std::initializer_list<ResourceBuffer*> sources,
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
  device_->setComputeTarget(0, target);
  shader.dispatch(groups(target.width()), groups(target.height()), 1, sources, {options.constants, factorBuffer});
}

void FramePasses::composeSourceOver(ResourceBuffer& target, std::span<ResourceBuffer* const> layers) {
  composeSourceOver(target, layers, path_);
}

void FramePasses::composeSourceOver(ResourceBuffer& target, std::span<ResourceBuffer* const> layers,
                                    FramePassPath path) {
  if (path == FramePassPath::Draw || !computable(target)) {
    PassOptions options;
    options.blendState = kBlendStateSourceOver;
    for (ResourceBuffer* layer : layers) pixelShader(FramePass::Copy).draw(target, {layer}, options);
    return;
  }
  GraphicsBackend& backend = device_->backend();
  device_->setComputeTarget(0, target);
  while (!layers.empty()) {
    const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(layers.size(), kMaxFusedLayers));
    for (std::uint32_t unit = 0; unit < count; ++unit) backend.bindTexture(unit, layers[unit]->texture());
    sourceOverShader(count).dispatch(groups(target.width()), groups(target.height()), 1);
    for (std::uint32_t unit = 0; unit < count; ++unit) backend.bindTexture(unit, 0);
    layers = layers.subspan(count);
  }
}

FramePassPath FramePasses::measureFasterPath(std::uint32_t width, std::uint32_t height) {
  ResourceBuffer source(*device_, width, height);
  ResourceBuffer target(*device_, width, height);
  source.clear({0.5f, 0.25f, 0.125f, 0.5f});
  target.clear({0.0f, 0.0f, 0.0f, 1.0f});
  PassOptions options;
  options.blendState = kBlendStateSourceOver;
  const auto time = [&](FramePassPath path) {
    run(FramePass::Copy, path, target, {&source}, options);  // compiles and warms up
    device_->finish();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 4; ++i) run(FramePass::Copy, path, target, {&source}, options);
    device_->finish();
    return std::chrono::steady_clock::now() - start;
  };
  const auto draw = time(FramePassPath::Draw);
  const auto compute = time(FramePassPath::Compute);
  path_ = compute < draw ? FramePassPath::Compute : FramePassPath::Draw;
  return path_;
}

}  // namespace Media
