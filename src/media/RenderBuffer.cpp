#include "media/RenderBuffer.h"

#include <cstring>

#include "media/CpuAccessBuffer.h"
#include "media/GraphicsDevice.h"
#include "media/PixelShader.h"
#include "system/Exception.h"

namespace Media {

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
  release();
  width_ = width;
  height_ = height;
  texture_ = device_->backend().createTexture(width, height, format_, nullptr, "Media::RenderBuffer::createTexture2D");
}

void RenderBuffer::createRenderTargetView() {
  if (renderTarget_) return;
  renderTarget_ = device_->backend().createRenderTarget(texture_, "Media::RenderBuffer::createRenderTargetView");
}

GpuId RenderBuffer::renderTargetView() {
  createRenderTargetView();
  return renderTarget_;
}

void RenderBuffer::clear(const Color& color) { device_->backend().clearTexture(texture_, color); }

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

std::vector<std::byte> RenderBuffer::readPixels() {
  CpuAccessBuffer staging(*device_, width_, height_, format_);
  staging.copyResource(texture_);
  return staging.takeData();
}

void RenderBuffer::copyToRGBA(void* data) {
  if (format_ != Format::Rgba8Unorm && format_ != Format::Bgra8Unorm) {
    throw System::NoteException("Media::RenderBuffer::copyToRGBA", "invalid pixel format.");
  }
  const std::vector<std::byte> pixels = readPixels();
  std::memcpy(data, pixels.data(), pixels.size());
}

ResourceBuffer& RenderBuffer::auxiliary(std::unique_ptr<ResourceBuffer>& slot, std::uint32_t width,
                                        std::uint32_t height, Format format, const Color& clearColor) {
  if (!slot) {
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

}  // namespace Media
