#include "media/CpuAccessBuffer.h"

#include <cstring>

#include "media/GraphicsDevice.h"

namespace Media {

namespace {

constexpr const char* kPlace = "Media::CpuAccessBuffer::CpuAccessBuffer";

}  // namespace

CpuAccessBuffer::CpuAccessBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format)
    : device_(&device), width_(width), height_(height), format_(format) {}

CpuAccessBuffer::~CpuAccessBuffer() { release(); }

void CpuAccessBuffer::release() noexcept {
  if (read_) device_->releaseOnGpu([device = device_, read = read_] { device->backend().destroyRead(read); });
  read_ = 0;
}

void CpuAccessBuffer::copyResource(GpuId texture) {
  std::lock_guard lock(mutex_);
  release();
  data_.clear();
  if (width_ && height_) read_ = device_->backend().beginRead(texture, width_, height_, format_, kPlace);
}

const std::vector<std::byte>& CpuAccessBuffer::data() {
  std::lock_guard lock(mutex_);
  if (!read_) return data_;
  const std::byte* mapped = nullptr;
  device_->run([&] { mapped = device_->backend().waitRead(read_, kPlace); });
  // The bytes are copied here, on the caller's thread: the GPU thread only waited.
  const std::size_t pixels = std::size_t{width_} * height_;
  data_.resize(rowPitch() * height_);
  if (isAlphaOnly(format_)) {
    for (std::size_t i = 0; i < pixels; ++i) data_[i] = mapped[i * 4 + 3];
  } else {
    std::memcpy(data_.data(), mapped, data_.size());
  }
  release();
  return data_;
}

std::vector<std::byte> CpuAccessBuffer::takeData() {
  data();
  std::lock_guard lock(mutex_);
  return std::move(data_);
}

}  // namespace Media
