#include "media/CpuAccessBuffer.h"

#include "media/GraphicsDevice.h"

namespace Media {

CpuAccessBuffer::CpuAccessBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format)
    : device_(&device), width_(width), height_(height), format_(format), data_(rowPitch() * height) {}

void CpuAccessBuffer::copyResource(GpuId texture) {
  device_->backend().readTexture(texture, width_, height_, format_, data_.data(),
                                 "Media::CpuAccessBuffer::CpuAccessBuffer");
}

}  // namespace Media
