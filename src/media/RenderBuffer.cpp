#include "media/RenderBuffer.h"

#include <cstring>

#include "media/BufferGeometry.h"
#include "media/CpuAccessBuffer.h"
#include "media/GraphicsDevice.h"
#include "media/PixelShader.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ResourceConvert.h"
#include "system/Exception.h"

namespace Media {

namespace {

// The error an image binding of a texture in an unsuitable format stands for.
constexpr std::uint32_t kInvalidOperation = 0x0502;

}  // namespace

RenderBuffer::RenderBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height)
    : RenderBuffer(device, width, height, device.pixelFormat()) {}

RenderBuffer::RenderBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format)
    : device_(&device), format_(format) {
  createTexture2D(width, height);
}

RenderBuffer::~RenderBuffer() { release(); }

void RenderBuffer::release() noexcept {
  if (renderTarget_ || texture_) {
    device_->releaseOnGpu([device = device_, target = renderTarget_, texture = texture_] {
      if (target) device->backend().destroyRenderTarget(target);
      if (texture) device->backend().destroyTexture(texture);
    });
  }
  renderTarget_ = 0;
  texture_ = 0;
}

void RenderBuffer::createTexture2D(std::uint32_t width, std::uint32_t height) {
  if (texture_ && width == width_ && height == height_) return;
  // A frame may be made on a worker thread; its texture is made on the GPU thread.
  device_->run([&] {
    const GpuId texture =
        device_->backend().createTexture(width, height, format_, nullptr, 0, "Media::RenderBuffer::createTexture2D");
    release();
    width_ = width;
    height_ = height;
    texture_ = texture;
  });
}

void RenderBuffer::createRenderTargetView() {
  if (renderTarget_) return;
  renderTarget_ = device_->backend().createRenderTarget(texture_, "Media::RenderBuffer::createRenderTargetView");
}

GpuId RenderBuffer::renderTargetView() {
  createRenderTargetView();
  return renderTarget_;
}

GpuId RenderBuffer::unorderedAccessView() {
  if (format_ != device_->pixelFormat()) {
    throw System::HResultException("glBindImageTexture", "Media::RenderBuffer::createUnorderedAccessView",
                                   kInvalidOperation);
  }
  return texture_;
}

void RenderBuffer::clear(const Color& color) { device_->backend().clearTexture(texture_, maskedColor(format_, color)); }

std::unique_ptr<ResourceBuffer> RenderBuffer::toResourceBuffer() {
  auto copy = std::make_unique<ResourceBuffer>(*device_, width_, height_, format_);
  device_->backend().copyTextureRegion(texture_, copy->texture(), CopyRegion{0, 0, 0, 0, width_, height_});
  return copy;
}

std::unique_ptr<ResourceBuffer> RenderBuffer::toResourceBuffer(PixelShader& opaqueCopy) {
  auto copy = std::make_unique<ResourceBuffer>(*device_, width_, height_, format_);
  opaqueCopy.draw(*copy, *this);
  return copy;
}

std::vector<std::byte> RenderBuffer::readPixels() { return startReadBack()->takeData(); }

std::unique_ptr<CpuAccessBuffer> RenderBuffer::startReadBack() {
  auto staging = std::make_unique<CpuAccessBuffer>(*device_, width_, height_, format_);
  staging->copyResource(texture_);
  return staging;
}

void RenderBuffer::copyToRGBA(void* data) {
  if (format_ != Format::Rgba8Unorm && format_ != Format::Bgra8Unorm) {
    throw System::NoteException("Media::RenderBuffer::copyToRGBA", "invalid pixel format.");
  }
  const std::vector<std::byte> pixels = readPixels();
  std::memcpy(data, pixels.data(), pixels.size());
}

std::shared_ptr<ImageBuffer> RenderBuffer::toImageBuffer() {
  auto image = std::make_shared<ImageBuffer>(format_, width_, height_);
  std::unique_ptr<CpuAccessBuffer> staging;
  device_->run([&] { staging = startReadBack(); });
  staging->copyTo(image->data(), image->pitch());
  return image;
}

std::shared_ptr<ImageBuffer> RenderBuffer::toImageBuffer(ResourceConvert& convert, Format format, bool straightAlpha) {
  return convert.convert(*this, format, straightAlpha);
}

std::shared_ptr<ImageBuffer> RenderBuffer::toYUY2(ResourceConvert& convert) {
  return convert.convert(*this, Format::Yuy2, false);
}

ResourceBuffer& RenderBuffer::auxiliary(std::unique_ptr<ResourceBuffer>& slot, std::uint32_t width,
                                        std::uint32_t height, Format format, const Color& clearColor) {
  if (!slot || slot->width() != clampBufferSide(width) || slot->height() != clampBufferSide(height)) {
    slot = std::make_unique<ResourceBuffer>(*device_, width, height, format);
    slot->clear(clearColor);
  }
  return *slot;
}

ResourceBuffer& RenderBuffer::depthBuffer() {
  return auxiliary(depthBuffer_, width_, height_, Format::R32Float, {0, 0, 0, 0});
}

ResourceBuffer& RenderBuffer::transparentBuffer() {
  return auxiliary(transparentBuffer_, width_, height_, format_, {0, 0, 0, 0});
}

ResourceBuffer& RenderBuffer::transparentDepthBuffer() {
  return auxiliary(transparentDepthBuffer_, width_, height_, Format::R32Float, {0, 0, 0, 0});
}

ResourceBuffer& RenderBuffer::normalBuffer() {
  return auxiliary(normalBuffer_, width_, height_, Format::Rgba16Float, {0, 0, 0, -1});
}

ResourceBuffer& RenderBuffer::normalTransparentBuffer() {
  return auxiliary(normalTransparentBuffer_, width_, height_, Format::Rgba16Float, {0, 0, 0, -1});
}

ResourceBuffer& RenderBuffer::shadowMap(std::size_t index) {
  const std::uint32_t side = device_->shadowBufferSize();
  return auxiliary(shadowMaps_.at(index), side, side, Format::Rg32Float, {1, 1, 1, 1});
}

void RenderBuffer::addLight(const LightRecord& light) {
  lights_.push_back(light);
  shadowMaps_.resize(lights_.size());
}

void RenderBuffer::clearLights() noexcept {
  lights_.clear();
  shadowMaps_.clear();
}

void RenderBuffer::resetForNewFrame() noexcept {
  clearLights();
  depthBuffer_.reset();
  transparentBuffer_.reset();
  transparentDepthBuffer_.reset();
  normalBuffer_.reset();
  normalTransparentBuffer_.reset();
}

}  // namespace Media
