// What a pass or a draw writes: an image on the GPU or the frame itself. Both kinds can
// be drawn to and, in a drawable format, written in place by a compute shader, so the
// frame passes take either without a copy. A plain reference, valid for one call.
#pragma once

#include <cstdint>
#include <variant>

#include "media/Format.h"

namespace Media {

class GraphicsDevice;
class RenderBuffer;
class ResourceBuffer;

class PassTarget {
 public:
  // Implicit, so that either buffer stands where a target is asked for.
  PassTarget(ResourceBuffer& buffer) noexcept : buffer_(&buffer) {}
  PassTarget(RenderBuffer& buffer) noexcept : buffer_(&buffer) {}

  std::uint32_t width() const noexcept;
  std::uint32_t height() const noexcept;
  Format format() const noexcept;

  void setRenderTarget(GraphicsDevice& device) const;
  void setComputeTarget(GraphicsDevice& device, std::uint32_t slot) const;

 private:
  std::variant<ResourceBuffer*, RenderBuffer*> buffer_;
};

}  // namespace Media
