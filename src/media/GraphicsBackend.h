// What the graphics device asks of the GPU API, and nothing more. The device, the
// buffers and the shaders hold the logic; a back end only creates, binds and draws.
// Every call runs on the device's GPU thread. Objects are named by ids the back end
// hands out; 0 is never a valid id and unbinds where a binding is asked.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "media/BufferGeometry.h"
#include "media/CompiledShader.h"
#include "media/Format.h"
#include "media/InputLayout.h"
#include "media/RasterizerStateTable.h"
#include "media/SamplerStateTable.h"
#include "media/pass/BlendStateTable.h"

namespace Media {

using GpuId = std::uint32_t;

enum class Topology : std::uint8_t { PointList, TriangleList, TriangleStrip };

using Color = std::array<float, 4>;

// What a clear stores in a texture of `format`: a mask keeps alpha alone.
constexpr Color maskedColor(Format format, const Color& color) noexcept {
  return isAlphaOnly(format) ? Color{0.0f, 0.0f, 0.0f, color[3]} : color;
}

class GraphicsBackend {
 public:
  virtual ~GraphicsBackend() = default;

  // What the start logs: the renderer and its version.
  virtual std::string rendererName() const = 0;
  virtual std::string versionName() const = 0;
  // Whether pixel shaders may order their accesses to a pixel (rasterizer ordered views).
  virtual bool hasRasterizerOrderedViews() const = 0;
  virtual bool supportsTexture(Format format) const = 0;

  // A texture of one mip level. `pixels` is null or holds rows of the CPU image of
  // `format`, top row first, `pitch` bytes apart (0: tight rows); a pitch is a whole
  // number of the format's blocks. Failures throw with the call and `place`.
  virtual GpuId createTexture(std::uint32_t width, std::uint32_t height, Format format, const void* pixels,
                              std::size_t pitch, const char* place) = 0;
  virtual void destroyTexture(GpuId texture) = 0;
  // What a texture is drawn through: the render target view of the texture.
  virtual GpuId createRenderTarget(GpuId texture, const char* place) = 0;
  virtual void destroyRenderTarget(GpuId target) = 0;
  // Fills the whole texture with one colour, converted to the texture's format.
  virtual void clearTexture(GpuId texture, const Color& color) = 0;
  virtual void copyTextureRegion(GpuId source, GpuId target, const CopyRegion& region) = 0;

  // Read-back in two halves, so that the GPU copies while the GPU thread goes on with
  // the next frame. beginRead queues a copy of the whole texture, as it is at this point
  // of the command stream, into memory the CPU can read, and returns at once. waitRead
  // waits until the copy is done and returns its bytes: tight rows of the CPU image of
  // `format`, except that a mask comes as four bytes a pixel with its alpha last. The
  // bytes stay valid, and may be read on any thread, until destroyRead.
  virtual GpuId beginRead(GpuId texture, std::uint32_t width, std::uint32_t height, Format format,
                          const char* place) = 0;
  virtual const std::byte* waitRead(GpuId read, const char* place) = 0;
  virtual void destroyRead(GpuId read) = 0;

  // A buffer of vertices or constants with its initial content.
  virtual GpuId createBuffer(const void* data, std::size_t size, const char* place) = 0;
  virtual void updateBuffer(GpuId buffer, const void* data, std::size_t size) = 0;
  virtual void destroyBuffer(GpuId buffer) = 0;

  // A program of one stage from its final GLSL text.
  virtual GpuId createShader(ShaderStage stage, const std::string& glsl, const char* call, const char* place) = 0;
  virtual void destroyShader(GpuId shader) = 0;
  virtual GpuId createInputLayout(const std::vector<InputElement>& layout, const char* place) = 0;
  virtual void destroyInputLayout(GpuId layout) = 0;

  // Pipeline. setRenderTarget also sets the viewport to the whole target; into a target
  // of an alpha-only format only alpha is written. Target 0 unbinds.
  virtual void setRenderTarget(GpuId target, std::uint32_t width, std::uint32_t height, Format format) = 0;
  virtual void bindTexture(std::uint32_t unit, GpuId texture) = 0;
  virtual void bindSampler(std::uint32_t unit, std::size_t samplerState) = 0;
  // A texture as a read-write image; texture 0 unbinds the unit. What shaders write to
  // images is made visible to whatever reads it next, by whatever means.
  virtual void bindImage(std::uint32_t unit, GpuId texture, Format format) = 0;
  virtual void bindConstantBuffer(std::uint32_t binding, GpuId buffer) = 0;
  virtual void setBlendState(const BlendStateDesc& state, const Color& factor) = 0;
  virtual void setRasterizerState(const RasterizerState& state) = 0;
  virtual void useShader(ShaderStage stage, GpuId shader) = 0;
  virtual void draw(Topology topology, GpuId inputLayout, GpuId vertexBuffer, std::uint32_t stride,
                    std::uint32_t count) = 0;
  virtual void dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z) = 0;
  // Waits until the GPU has done all that was asked of it; for timing and read-back.
  virtual void finish() = 0;
};

}  // namespace Media
