#include "media/ConstantBufferCommon.h"

#include "media/GraphicsDevice.h"

namespace Media {

ConstantBufferCommon::ConstantBufferCommon(GraphicsDevice& device) : device_(&device) {}

ConstantBufferCommon::~ConstantBufferCommon() { release(); }

void ConstantBufferCommon::release() noexcept {
  if (buffer_) {
    device_->releaseOnGpu([device = device_, buffer = buffer_] { device->backend().destroyBuffer(buffer); });
  }
  buffer_ = 0;
  size_ = 0;
}

void ConstantBufferCommon::create(const void* data, std::size_t size) {
  const GpuId buffer = device_->backend().createBuffer(data, size, "Media::ConstantBufferCommon::create");
  release();
  buffer_ = buffer;
  size_ = size;
}

void ConstantBufferCommon::update(const void* data) { device_->backend().updateBuffer(buffer_, data, size_); }

}  // namespace Media
