#include "media/ResourceBuffer.h"

#include <cstring>

#include "media/BufferGeometry.h"
#include "media/GraphicsDevice.h"
#include "system/Exception.h"

namespace Media {

namespace {

// The status a framebuffer reports for a texture it cannot draw to.
constexpr std::uint32_t kFramebufferUnsupported = 0x8CDD;

}  // namespace

ResourceBuffer::ResourceBuffer(GraphicsDevice& device) : device_(&device), format_(device.pixelFormat()) {}

ResourceBuffer::ResourceBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height)
    : ResourceBuffer(device, width, height, device.pixelFormat()) {}

ResourceBuffer::ResourceBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format)
    : device_(&device), width_(clampBufferSide(width)), height_(clampBufferSide(height)), format_(format) {
  if (device.isGpuThread()) createTexture2D();
}

ResourceBuffer::ResourceBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format,
                               std::vector<std::byte> pixels)
    : device_(&device),
      width_(width),
      height_(height),
      format_(format == Format::Yuy2 ? Format::Yuy2Packed : format),
      pendingPixels_(std::move(pixels)) {
  // An upload reads whole rows: a YUY2 row of odd width is padded to a whole block.
  if (pendingPixels_.size() < rowBytes(format_, width) * height) {
    throw System::NoteException("Media::ResourceBuffer::ResourceBuffer", "image data shorter than its size.");
  }
  if (width > kMaxBufferSide || height > kMaxBufferSide) {
    // Keep the top left part, as a clamped texture shows it.
    const std::size_t sourceRow = rowBytes(format_, width);
    width_ = clampBufferSide(width);
    height_ = clampBufferSide(height);
    const std::size_t row = rowBytes(format_, width_);
    for (std::uint32_t y = 0; y < height_; ++y) {
      std::memmove(pendingPixels_.data() + y * row, pendingPixels_.data() + y * sourceRow, row);
    }
    pendingPixels_.resize(row * height_);
  }
  if (device.isGpuThread()) createTexture2D();
}

ResourceBuffer::~ResourceBuffer() { release(); }

void ResourceBuffer::release() noexcept {
  if (!texture_ && !renderTarget_) return;
  const GpuId texture = texture_;
  const GpuId target = renderTarget_;
  GraphicsDevice* device = device_;
  auto destroy = [device, texture, target] {
    if (target) device->backend().destroyRenderTarget(target);
    if (texture) {
      device->forgetImage(texture);
      device->backend().destroyTexture(texture);
    }
  };
  device_->releaseOnGpu(destroy);
  texture_ = 0;
  renderTarget_ = 0;
}

void ResourceBuffer::copyFromRGBA(Format format, const void* data, std::uint32_t width, std::uint32_t height) {
  constexpr const char* kPlace = "Media::ResourceBuffer::copyFromRGBA";
  if (!empty()) throw System::NoteException(kPlace, "already allocated resource buffer.");
  if (format != Format::Rgba8Unorm && format != Format::Bgra8Unorm) {
    throw System::NoteException(kPlace, "invalid pixel format.");
  }
  if (device_->isGpuThread() && width <= kMaxBufferSide && height <= kMaxBufferSide) {
    // On the GPU thread the texture takes the caller's pixels as they are, uncopied.
    const GpuId texture = width && height ? device_->backend().createTexture(width, height, format, data,
                                                                             "Media::ResourceBuffer::createTexture2D")
                                          : 0;
    width_ = width;
    height_ = height;
    format_ = format;
    texture_ = texture;
    return;
  }
  const auto* bytes = static_cast<const std::byte*>(data);
  std::vector<std::byte> pixels(bytes, bytes + static_cast<std::size_t>(width) * height * 4);
  ResourceBuffer upload(*device_, width, height, format, std::move(pixels));
  width_ = upload.width_;
  height_ = upload.height_;
  format_ = format;
  pendingPixels_ = std::move(upload.pendingPixels_);
  std::swap(texture_, upload.texture_);
}

void ResourceBuffer::createTexture2D() {
  if (texture_ || empty()) return;
  texture_ = device_->backend().createTexture(width_, height_, format_,
                                              pendingPixels_.empty() ? nullptr : pendingPixels_.data(),
                                              "Media::ResourceBuffer::createTexture2D");
  pendingPixels_ = {};
}

GpuId ResourceBuffer::texture() {
  createTexture2D();
  return texture_;
}

GpuId ResourceBuffer::unorderedAccessView() {
  requireDrawable("Media::ResourceBuffer::createUnorderedAccessView");
  return texture();
}

void ResourceBuffer::createRenderTargetView() {
  if (renderTarget_) return;
  requireDrawable("Media::ResourceBuffer::createRenderTargetView");
  renderTarget_ = device_->backend().createRenderTarget(texture(), "Media::ResourceBuffer::createRenderTargetView");
}

GpuId ResourceBuffer::renderTargetView() {
  createRenderTargetView();
  return renderTarget_;
}

void ResourceBuffer::requireDrawable(const char* place) const {
  if (!device_->isDrawable(format_)) {
    throw System::HResultException("glCheckNamedFramebufferStatus", place, kFramebufferUnsupported);
  }
}

void ResourceBuffer::clear(const Color& color) {
  if (!empty()) device_->backend().clearTexture(texture(), maskedColor(format_, color));
}

std::unique_ptr<ResourceBuffer> ResourceBuffer::crop(std::uint32_t width, std::uint32_t height, std::int32_t x,
                                                     std::int32_t y) {
  auto result = std::make_unique<ResourceBuffer>(*device_, width, height, format_);
  if (result->empty()) return result;
  result->clear({0, 0, 0, 0});
  const std::optional<CopyRegion> region = cropRegion(width_, height_, result->width(), result->height(), x, y);
  if (region) device_->backend().copyTextureRegion(texture(), result->texture(), *region);
  return result;
}

}  // namespace Media
