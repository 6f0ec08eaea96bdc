#include "media/PassTarget.h"

#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"

namespace Media {

std::uint32_t PassTarget::width() const noexcept {
  return std::visit([](auto* buffer) { return buffer->width(); }, buffer_);
}

std::uint32_t PassTarget::height() const noexcept {
  return std::visit([](auto* buffer) { return buffer->height(); }, buffer_);
}

Format PassTarget::format() const noexcept {
  return std::visit([](auto* buffer) { return buffer->format(); }, buffer_);
}

void PassTarget::setRenderTarget(GraphicsDevice& device) const {
  std::visit([&device](auto* buffer) { device.setRenderTarget(*buffer); }, buffer_);
}

void PassTarget::setComputeTarget(GraphicsDevice& device, std::uint32_t slot) const {
  std::visit([&device, slot](auto* buffer) { device.setComputeTarget(slot, *buffer); }, buffer_);
}

}  // namespace Media
