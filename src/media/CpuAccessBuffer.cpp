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

const std::byte* CpuAccessBuffer::waitForCopy() {
  const std::byte* mapped = nullptr;
  device_->run([&] { mapped = device_->backend().waitRead(read_, kPlace); });
  return mapped;
}

// The bytes are copied on the caller's thread: the GPU thread only waited.
void CpuAccessBuffer::copyRows(const std::byte* mapped, std::byte* rows, std::size_t pitch) const {
  const std::size_t row = rowPitch();
  for (std::size_t y = 0; y < height_; ++y) {
    std::byte* out = rows + y * pitch;
    if (isAlphaOnly(format_)) {
      const std::byte* in = mapped + y * width_ * 4;
      for (std::size_t x = 0; x < width_; ++x) out[x] = in[x * 4 + 3];
    } else {
      std::memcpy(out, mapped + y * row, row);
    }
  }
}

const std::vector<std::byte>& CpuAccessBuffer::data() {
  std::lock_guard lock(mutex_);
  if (!read_) return data_;
  data_.resize(rowPitch() * height_);
  copyRows(waitForCopy(), data_.data(), rowPitch());
  release();
  return data_;
}

void CpuAccessBuffer::copyTo(std::byte* rows, std::size_t pitch) {
  std::lock_guard lock(mutex_);
  if (read_) {
    copyRows(waitForCopy(), rows, pitch);
    release();
    return;
  }
  // data() has taken the copy already.
  if (data_.empty()) return;
  const std::size_t row = rowPitch();
  for (std::size_t y = 0; y < height_; ++y) std::memcpy(rows + y * pitch, data_.data() + y * row, row);
}

std::vector<std::byte> CpuAccessBuffer::takeData() {
  data();
  std::lock_guard lock(mutex_);
  return std::move(data_);
}

}  // namespace Media
