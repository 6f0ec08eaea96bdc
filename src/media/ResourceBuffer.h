// An image on the GPU, uniquely owned. Sizes are clamped to the side limit; a buffer of
// no area has no texture. A buffer may be made on any thread: off the GPU thread it keeps
// its pixels and creates its texture at its first use on the GPU thread. Everything else
// runs on the GPU thread. Views are made at their first use and kept with the buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "media/Format.h"
#include "media/GraphicsBackend.h"

namespace Media {

class GraphicsDevice;
class ImageBuffer;
class ResourceConvert;
struct ConvertParameters;

class ResourceBuffer {
 public:
  // An empty buffer: no size, no texture.
  explicit ResourceBuffer(GraphicsDevice& device);
  // A buffer in the device's pixel format, or in `format`.
  ResourceBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height);
  ResourceBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format);
  // An upload of a CPU image in the same format: tight rows of rowBytes(), top row
  // first; fewer bytes than the rows need throw. A YUY2 CPU image becomes the packed
  // GPU format.
  ResourceBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format,
                 std::vector<std::byte> pixels);
  // The same from rows `pitch` bytes apart, read where they lie on the GPU thread and
  // copied elsewhere. A pitch shorter than a row, or not a whole number of the format's
  // blocks, throws.
  ResourceBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format,
                 const std::byte* rows, std::size_t pitch);
  // A CPU image in the device's pixel format: uploaded as it stands when the image has
  // that format, else converted on the GPU through `convert` (which throws for a format
  // it cannot convert).
  ResourceBuffer(ResourceConvert& convert, const ImageBuffer& image, const ConvertParameters& parameters);
  ~ResourceBuffer();
  ResourceBuffer(const ResourceBuffer&) = delete;
  ResourceBuffer& operator=(const ResourceBuffer&) = delete;

  // The device the buffer belongs to, for those that make buffers beside it.
  GraphicsDevice& device() const noexcept { return *device_; }
  std::uint32_t width() const noexcept { return width_; }
  std::uint32_t height() const noexcept { return height_; }
  Format format() const noexcept { return format_; }
  bool empty() const noexcept { return width_ == 0 || height_ == 0; }

  // Gives an empty buffer its size and content from 32-bit pixels, format 28 or 87, with
  // a pitch of width * 4. Throws, leaving the buffer as it was, if it is not empty.
  void copyFromRGBA(Format format, const void* data, std::uint32_t width, std::uint32_t height);

  // Creates the texture where it is missing and the size is known.
  void createTexture2D();
  void createRenderTargetView();
  // The texture itself serves as the shader resource and the read-write image.
  GpuId texture();
  GpuId shaderResourceView() { return texture(); }
  GpuId unorderedAccessView();
  GpuId renderTargetView();

  // A mask keeps alpha alone.
  void clear(const Color& color);
  // A new buffer of width by height, transparent, with the part of this one that lies
  // inside the rectangle at (x, y) of this one copied in; x and y may be negative.
  std::unique_ptr<ResourceBuffer> crop(std::uint32_t width, std::uint32_t height, std::int32_t x, std::int32_t y);

 private:
  // Takes rows of `width` pixels (before clamping), `pitch` bytes apart, as the content:
  // into the texture at once on the GPU thread, else into a tight copy kept until the
  // first use there. A pitch shorter than a row or not in whole blocks throws.
  void setPixels(const std::byte* rows, std::uint32_t width, std::size_t pitch);
  void requireDrawable(const char* place) const;
  void release() noexcept;

  GraphicsDevice* device_;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  Format format_;
  std::vector<std::byte> pendingPixels_;
  std::size_t pendingPitch_ = 0;  // 0: tight rows
  GpuId texture_ = 0;
  GpuId renderTarget_ = 0;
};

}  // namespace Media
