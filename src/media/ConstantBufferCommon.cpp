#include "media/ConstantBufferCommon.h"

#include <cstring>

#include "media/GraphicsDevice.h"

namespace Media {

namespace {

constexpr const char* kPlace = "Media::ConstantBufferCommon::create";

void destroyLater(GraphicsDevice& device, GpuId buffer) noexcept {
  if (buffer) device.releaseOnGpu([&device, buffer] { device.backend().destroyBuffer(buffer); });
}

}  // namespace

ConstantBufferCommon::ConstantBufferCommon(GraphicsDevice& device) : device_(&device) {}

ConstantBufferCommon::~ConstantBufferCommon() { release(); }

void ConstantBufferCommon::release() noexcept {
  destroyLater(*device_, buffer_);
  buffer_ = 0;
  releasePadded();
}

void ConstantBufferCommon::releasePadded() const noexcept {
  destroyLater(*device_, padded_);
  padded_ = 0;
  paddedSize_ = 0;
}

void ConstantBufferCommon::create(const void* data, std::size_t size) {
  GpuId buffer = 0;
  device_->run([&] { buffer = device_->backend().createBuffer(data, size, kPlace); });
  release();
  buffer_ = buffer;
  const auto* bytes = static_cast<const std::byte*>(data);
  if (bytes) {
    bytes_.assign(bytes, bytes + size);
  } else {
    bytes_.assign(size, std::byte{0});
  }
}

void ConstantBufferCommon::update(const void* data) {
  std::memcpy(bytes_.data(), data, bytes_.size());
  device_->run([&] { device_->backend().updateBuffer(buffer_, bytes_.data(), bytes_.size()); });
  releasePadded();
}

GpuId ConstantBufferCommon::bufferFor(std::size_t blockSize) const {
  if (blockSize <= bytes_.size()) return buffer_;
  if (!padded_ || paddedSize_ != blockSize) {
    releasePadded();
    std::vector<std::byte> padded(blockSize);
    std::memcpy(padded.data(), bytes_.data(), bytes_.size());
    padded_ = device_->backend().createBuffer(padded.data(), blockSize, kPlace);
    paddedSize_ = blockSize;
  }
  return padded_;
}

}  // namespace Media
