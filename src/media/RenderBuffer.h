// A frame that is drawn to, with the auxiliary buffers that depth, transparency, normals
// and shadows of 3D drawing keep beside it, and the lights of the frame. Shared by the
// render job and whoever shows or exports the frame; made on any thread (the texture is
// made on the GPU thread), used on the GPU thread, destroyed on any while the device
// lives. Auxiliary buffers are made and cleared at their first use, at the frame's size,
// and made again when the frame's size has changed since.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "media/Format.h"
#include "media/GraphicsBackend.h"
#include "media/LightRecord.h"
#include "media/ResourceBuffer.h"

namespace Media {

class CpuAccessBuffer;
class GraphicsDevice;
class ImageBuffer;
class PixelShader;
class ResourceConvert;

class RenderBuffer {
 public:
  RenderBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height);
  RenderBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format);
  ~RenderBuffer();
  RenderBuffer(const RenderBuffer&) = delete;
  RenderBuffer& operator=(const RenderBuffer&) = delete;

  std::uint32_t width() const noexcept { return width_; }
  std::uint32_t height() const noexcept { return height_; }
  Format format() const noexcept { return format_; }
  std::uint32_t sampleCount() const noexcept { return 1; }

  // Does nothing when the size is unchanged; otherwise releases the views and the
  // texture and makes them new. The auxiliary buffers stay until their users remake them.
  void createTexture2D(std::uint32_t width, std::uint32_t height);
  void createRenderTargetView();
  GpuId texture() const noexcept { return texture_; }
  GpuId shaderResourceView() const noexcept { return texture_; }
  GpuId renderTargetView();
  // The frame as a read-write image, for passes and shaders that write it in place.
  // Only a frame in the device's pixel format has one; others throw.
  GpuId unorderedAccessView();

  // A mask keeps alpha alone.
  void clear(const Color& color);

  // A copy of the frame as it is.
  std::unique_ptr<ResourceBuffer> toResourceBuffer();
  // A copy drawn through `opaqueCopy`, the frame pass that sets alpha to 1.
  std::unique_ptr<ResourceBuffer> toResourceBuffer(PixelShader& opaqueCopy);
  // Read-back: tight rows of the CPU image of the buffer's format, top row first.
  std::vector<std::byte> readPixels();
  // Queues the read-back of the frame as it is now and returns at once; the GPU thread
  // may draw the next frame into this buffer while the copy is waited for elsewhere.
  std::unique_ptr<CpuAccessBuffer> startReadBack();
  // Read-back of a 32-bit frame (28 or 87) into `data`, width * 4 bytes a row.
  void copyToRGBA(void* data);
  // Read-back into a new CPU image of the frame's format. Any thread.
  std::shared_ptr<ImageBuffer> toImageBuffer();
  // Read-back into a new CPU image of `format`, converted on the GPU (see
  // ResourceConvert): RGBA and BGRA with straight alpha where `straightAlpha` is set.
  std::shared_ptr<ImageBuffer> toImageBuffer(ResourceConvert& convert, Format format, bool straightAlpha);
  std::shared_ptr<ImageBuffer> toYUY2(ResourceConvert& convert);

  ResourceBuffer& depthBuffer();
  ResourceBuffer& transparentBuffer();
  ResourceBuffer& transparentDepthBuffer();
  ResourceBuffer& normalBuffer();
  ResourceBuffer& normalTransparentBuffer();
  // Shadow map `index`, whose slot must exist: the caller sizes shadowMaps() first.
  ResourceBuffer& shadowMap(std::size_t index);
  std::vector<std::unique_ptr<ResourceBuffer>>& shadowMaps() noexcept { return shadowMaps_; }

  // The lights of the frame, in the order the light effects added them; each light has
  // its shadow map slot at the same index, empty until the shadow pass makes it.
  const std::vector<LightRecord>& lights() const noexcept { return lights_; }
  void addLight(const LightRecord& light);
  void clearLights() noexcept;

  // A frame kept for the next one starts as a new one does: no lights, and no
  // auxiliary buffers holding the depth and shadows of the frame before. Not while a
  // task of the frame before may still use them.
  void resetForNewFrame() noexcept;

 private:
  void release() noexcept;
  ResourceBuffer& auxiliary(std::unique_ptr<ResourceBuffer>& slot, std::uint32_t width, std::uint32_t height,
                            Format format, const Color& clearColor);

  GraphicsDevice* device_;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  Format format_;
  GpuId texture_ = 0;
  GpuId renderTarget_ = 0;
  std::unique_ptr<ResourceBuffer> depthBuffer_;
  std::unique_ptr<ResourceBuffer> transparentBuffer_;
  std::unique_ptr<ResourceBuffer> transparentDepthBuffer_;
  std::unique_ptr<ResourceBuffer> normalBuffer_;
  std::unique_ptr<ResourceBuffer> normalTransparentBuffer_;
  std::vector<std::unique_ptr<ResourceBuffer>> shadowMaps_;
  std::vector<LightRecord> lights_;
};

}  // namespace Media
