#include "media/ResourceBuffer.h"

#include <cstring>
#include <string>

#include "media/BufferGeometry.h"
#include "media/GraphicsDevice.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ResourceConvert.h"
#include "system/Exception.h"

namespace Media {

namespace {

constexpr const char* kPlace = "Media::ResourceBuffer::ResourceBuffer";
constexpr const char* kCreatePlace = "Media::ResourceBuffer::createTexture2D";

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
    throw System::NoteException(kPlace, "image data shorter than its size.");
  }
  if (width > kMaxBufferSide || height > kMaxBufferSide) {
    // The top left part, as a clamped texture shows it: rows keep their first length.
    pendingPitch_ = rowBytes(format_, width);
    width_ = clampBufferSide(width);
    height_ = clampBufferSide(height);
  }
  if (device.isGpuThread()) createTexture2D();
}

ResourceBuffer::ResourceBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format,
                               const std::byte* rows, std::size_t pitch)
    : device_(&device),
      width_(clampBufferSide(width)),
      height_(clampBufferSide(height)),
      format_(format == Format::Yuy2 ? Format::Yuy2Packed : format) {
  setPixels(rows, width, pitch);
}

ResourceBuffer::ResourceBuffer(ResourceConvert& convert, const ImageBuffer& image,
                               const ConvertParameters& parameters)
    : device_(&convert.device()),
      width_(clampBufferSide(image.width())),
      height_(clampBufferSide(image.height())),
      format_(convert.device().pixelFormat()) {
  if (image.format() == format_) {
    setPixels(image.data(), image.width(), image.pitch());
  } else {
    convert.convert(image, *this, parameters);
  }
}

void ResourceBuffer::setPixels(const std::byte* rows, std::uint32_t width, std::size_t pitch) {
  // The back end steps from row to row in whole texels.
  const FormatInfo* info = findFormat(format_);
  if (!info || pitch < rowBytes(format_, width) || pitch % info->bytesPerBlock != 0) {
    throw System::NoteException(kPlace, "image pitch invalid.", "pitch " + std::to_string(pitch));
  }
  if (empty()) return;
  if (device_->isGpuThread()) {
    texture_ = device_->backend().createTexture(width_, height_, format_, rows, pitch, kCreatePlace);
    return;
  }
  const std::size_t row = rowBytes(format_, width_);
  pendingPixels_.resize(row * height_);
  for (std::uint32_t y = 0; y < height_; ++y) std::memcpy(pendingPixels_.data() + y * row, rows + y * pitch, row);
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
  // On the GPU thread the texture takes the caller's pixels as they are, uncopied.
  ResourceBuffer upload(*device_, width, height, format, static_cast<const std::byte*>(data), std::size_t{width} * 4);
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
                                              pendingPitch_, kCreatePlace);
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
