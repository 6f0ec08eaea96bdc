#include "media/GraphicsDevice.h"

#include <exception>

#include "media/FrameDrawResources.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "system/Exception.h"
#include "system/Log.h"

namespace Media {

namespace {

constexpr const char* kPlace = "Media::GraphicsDevice::GraphicsDevice";

// The formats whose support the start records for bug reports; nothing depends on it.
constexpr Format kLoggedFormats[] = {Format::Rgba8Unorm, Format::Bgra8Unorm,  Format::A8Unorm,    Format::Rgba16Float,
                                     Format::Yuy2Packed, Format::Rgba16Unorm, Format::Rgba16Snorm};

constexpr std::size_t kDefaultSampler = 1;

// Six vertices of the widest vertex record, ten floats.
constexpr std::size_t kSingleQuadBytes = 6 * 10 * sizeof(float);

}  // namespace

GraphicsDevice::GraphicsDevice(BackendFactory factory, DeviceSettings settings) : settings_(std::move(settings)) {
  samplers_.fill(kDefaultSampler);
  thread_ = std::thread([this] { loop(); });
  try {
    std::string warning;
    std::string renderer;
    run([this, &factory, &warning, &renderer] {
      backend_ = factory();
      warning = logStart();
      renderer = backend_->rendererName();
    });
    // The user is told on the starting thread, which owns the windows.
    if (!warning.empty() && settings_.warnUser) settings_.warnUser(warning, renderer);
  } catch (...) {
    // A back end that started but failed later goes on its own thread, like any other.
    post([this] { backend_.reset(); });
    {
      std::lock_guard lock(mutex_);
      stopping_ = true;
    }
    wake_.notify_one();
    thread_.join();
    throw;
  }
}

GraphicsDevice::~GraphicsDevice() {
  // The back end goes on the GPU thread, where its context is current, after all
  // queued releases.
  post([this] {
    frameDraw_.reset();
    if (singleQuadBuffer_) backend_->destroyBuffer(singleQuadBuffer_);
    backend_.reset();
  });
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

std::string GraphicsDevice::logStart() {
  System::Log::info(kPlace, "GL renderer : %s", backend_->rendererName().c_str());
  System::Log::info(kPlace, "GL version : %s", backend_->versionName().c_str());
  const bool ordered = backend_->hasRasterizerOrderedViews();
  System::Log::info(kPlace, "D3D ROVsSupported : %d", ordered ? 1 : 0);
  std::string warning;
  if (!ordered) {
    warning = "D3D ROVs not supported.\n\n一部の機能が正しく動作しない可能性があります";
    System::Log::warn(kPlace, "%s", warning.c_str());
  }
  for (Format format : kLoggedFormats) {
    System::Log::info(kPlace, "D3D %s Texture2D Supported : %d", findFormat(format)->name,
                      backend_->supportsTexture(format) ? 1 : 0);
  }
  return warning;
}

void GraphicsDevice::loop() {
  for (;;) {
    std::function<void()> work;
    {
      std::unique_lock lock(mutex_);
      wake_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
      if (queue_.empty()) return;
      work = std::move(queue_.front());
      queue_.pop_front();
    }
    work();
  }
}

void GraphicsDevice::run(const std::function<void()>& work) {
  if (isGpuThread()) {
    work();
    return;
  }
  std::mutex doneMutex;
  std::condition_variable doneSignal;
  bool done = false;
  std::exception_ptr failure;
  post([&] {
    try {
      work();
    } catch (...) {
      failure = std::current_exception();
    }
    std::lock_guard lock(doneMutex);
    done = true;
    doneSignal.notify_one();
  });
  std::unique_lock lock(doneMutex);
  doneSignal.wait(lock, [&] { return done; });
  if (failure) std::rethrow_exception(failure);
}

void GraphicsDevice::post(std::function<void()> work) {
  {
    std::lock_guard lock(mutex_);
    queue_.push_back(std::move(work));
  }
  wake_.notify_one();
}

void GraphicsDevice::requireGpuThread(const char* place) const {
  if (!isGpuThread()) throw System::NoteException(place, "GPU work called off the GPU thread.");
}

GraphicsBackend& GraphicsDevice::backend() {
  requireGpuThread("Media::GraphicsDevice::backend");
  return *backend_;
}

void GraphicsDevice::releaseOnGpu(std::function<void()> work) {
  if (isGpuThread()) {
    work();
  } else {
    post(std::move(work));
  }
}

bool GraphicsDevice::isDrawable(Format format) const noexcept {
  return format == settings_.pixelFormat || format == settings_.maskFormat || format == Format::R32Float ||
         format == Format::Rg32Float;
}

void GraphicsDevice::setRenderTarget(RenderBuffer& buffer) {
  const GpuId target = buffer.renderTargetView();
  backend().setRenderTarget(target, buffer.width(), buffer.height(), buffer.format());
}

void GraphicsDevice::setRenderTarget(ResourceBuffer& buffer) {
  const GpuId target = buffer.renderTargetView();
  backend().setRenderTarget(target, buffer.width(), buffer.height(), buffer.format());
}

void GraphicsDevice::setRenderTargetAndUnorderedAccess(RenderBuffer& buffer, std::uint32_t firstSlot,
                                                       std::initializer_list<ResourceBuffer*> views) {
  setRenderTarget(buffer);
  std::uint32_t slot = firstSlot;
  for (ResourceBuffer* view : views) setComputeTarget(slot++, *view);
}

void GraphicsDevice::setComputeTarget(std::uint32_t slot, ResourceBuffer& buffer) {
  images_.at(slot) = ImageView{buffer.unorderedAccessView(), buffer.format()};
}

void GraphicsDevice::setComputeTarget(std::uint32_t slot, RenderBuffer& buffer) {
  images_.at(slot) = ImageView{buffer.unorderedAccessView(), buffer.format()};
}

GraphicsDevice::ImageView GraphicsDevice::imageAt(std::uint32_t slot) const noexcept {
  return slot < kImageSlots ? images_[slot] : ImageView{};
}

void GraphicsDevice::forgetImage(GpuId texture) noexcept {
  for (ImageView& image : images_) {
    if (image.texture == texture) image = ImageView{};
  }
}

void GraphicsDevice::clearRenderTarget() { backend().setRenderTarget(0, 0, 0, Format::Unknown); }

void GraphicsDevice::setRasterizerState(std::size_t index) {
  if (rasterizerState_ == index) return;
  backend().setRasterizerState(kRasterizerStates.at(index));
  rasterizerState_ = index;
}

void GraphicsDevice::setBlendState(std::size_t index, const std::optional<Color>& factor) {
  if (blendState_ == index && !factor) return;
  backend().setBlendState(kBlendStates.at(index), factor.value_or(Color{1, 1, 1, 1}));
  blendState_ = index;
}

void GraphicsDevice::useShader(ShaderStage stage, GpuId shader) {
  GpuId& current = shaders_[static_cast<std::size_t>(stage)];
  if (current == shader) return;
  backend().useShader(stage, shader);
  current = shader;
}

void GraphicsDevice::destroyShader(ShaderStage stage, GpuId shader) {
  GpuId& current = shaders_[static_cast<std::size_t>(stage)];
  if (current == shader) current = 0;
  backend().destroyShader(shader);
}

void GraphicsDevice::setSampler(std::uint32_t slot, std::size_t state) { samplers_.at(slot) = state; }

std::size_t GraphicsDevice::samplerAt(std::uint32_t slot) const noexcept {
  return slot < kSamplerSlots ? samplers_[slot] : kDefaultSampler;
}

void GraphicsDevice::drawVertices(Topology topology, GpuId inputLayout, const void* data, std::uint32_t stride,
                                  std::uint32_t count) {
  GraphicsBackend& gpu = backend();
  const GpuId buffer =
      gpu.createBuffer(data, static_cast<std::size_t>(stride) * count, "Media::GraphicsDevice::drawVertices");
  gpu.draw(topology, inputLayout, buffer, stride, count);
  gpu.destroyBuffer(buffer);
}

void GraphicsDevice::drawPoints(const void* data, std::uint32_t stride, std::uint32_t count) {
  if (count) drawVertices(Topology::PointList, inputLayout_, data, stride, count);
}

GpuId GraphicsDevice::singleQuadBuffer() {
  if (!singleQuadBuffer_) {
    singleQuadBuffer_ = backend().createBuffer(nullptr, kSingleQuadBytes, "Media::GraphicsDevice::singleQuadBuffer");
  }
  return singleQuadBuffer_;
}

FrameDrawResources& GraphicsDevice::frameDraw() {
  if (!frameDraw_) frameDraw_ = std::make_unique<FrameDrawResources>(*this);
  return *frameDraw_;
}

void GraphicsDevice::finish() { backend().finish(); }

}  // namespace Media
