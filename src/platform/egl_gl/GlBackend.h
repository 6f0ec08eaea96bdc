// The graphics back end on OpenGL 4.5 core. Made on the device's GPU thread, where its
// EGL context stays current; every call comes from that thread. Conventions are set once
// at start so that positions, texture coordinates and pixel positions mean what they
// always meant: clip space origin at the upper left with depth 0 to 1, textures stored
// top row first, clockwise front faces, pixel centres at .5.
#pragma once

#include <GL/glcorearb.h>

#include <array>
#include <map>
#include <vector>

#include "media/GraphicsBackend.h"
#include "platform/egl_gl/EglContext.h"
#include "platform/egl_gl/GlBackendFactory.h"

namespace Platform {

class GlBackend : public Media::GraphicsBackend {
 public:
  GlBackend();
  ~GlBackend() override;

  std::string rendererName() const override;
  std::string versionName() const override;
  bool hasRasterizerOrderedViews() const override { return orderedViews_; }
  bool supportsTexture(Media::Format format) const override;

  Media::GpuId createTexture(std::uint32_t width, std::uint32_t height, Media::Format format, const void* pixels,
                             std::size_t pitch, const char* place) override;
  void destroyTexture(Media::GpuId texture) override;
  Media::GpuId createRenderTarget(Media::GpuId texture, const char* place) override;
  void destroyRenderTarget(Media::GpuId target) override;
  void clearTexture(Media::GpuId texture, const Media::Color& color) override;
  void copyTextureRegion(Media::GpuId source, Media::GpuId target, const Media::CopyRegion& region) override;
  Media::GpuId beginRead(Media::GpuId texture, std::uint32_t width, std::uint32_t height, Media::Format format,
                         const char* place) override;
  const std::byte* waitRead(Media::GpuId read, const char* place) override;
  void destroyRead(Media::GpuId read) override;

  Media::GpuId createBuffer(const void* data, std::size_t size, const char* place) override;
  void updateBuffer(Media::GpuId buffer, const void* data, std::size_t size) override;
  void destroyBuffer(Media::GpuId buffer) override;

  Media::GpuId createShader(Media::ShaderStage stage, const std::string& glsl, const char* call,
                            const char* place) override;
  void destroyShader(Media::GpuId shader) override;
  Media::GpuId createInputLayout(const std::vector<Media::InputElement>& layout, const char* place) override;
  void destroyInputLayout(Media::GpuId layout) override;

  void setRenderTarget(Media::GpuId target, std::uint32_t width, std::uint32_t height, Media::Format format) override;
  void bindTexture(std::uint32_t unit, Media::GpuId texture) override;
  void bindSampler(std::uint32_t unit, std::size_t samplerState) override;
  void bindImage(std::uint32_t unit, Media::GpuId texture, Media::Format format) override;
  void bindConstantBuffer(std::uint32_t binding, Media::GpuId buffer) override;
  void setBlendState(const Media::BlendStateDesc& state, const Media::Color& factor) override;
  void setRasterizerState(const Media::RasterizerState& state) override;
  void useShader(Media::ShaderStage stage, Media::GpuId shader) override;
  void draw(Media::Topology topology, Media::GpuId inputLayout, Media::GpuId vertexBuffer, std::uint32_t stride,
            std::uint32_t count) override;
  void dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z) override;
  void finish() override;

 private:
  // A read-back under way: a buffer mapped for good, and the fence after the copy into it.
  struct PendingRead {
    GLuint buffer = 0;
    std::size_t size = 0;
    GLsync fence = nullptr;
    const std::byte* mapped = nullptr;
  };

  // A mapped buffer of `size` bytes: a spare one where there is, else a new one.
  PendingRead takeReadBuffer(std::size_t size, const char* place);
  static void deleteReadBuffer(PendingRead& read);

  // Issues the barriers that work of the kinds `uses` needs after earlier image writes.
  void barrierBefore(GLbitfield uses);

  EglContext context_;
  GLuint pipeline_ = 0;
  bool orderedViews_ = false;
  std::array<GLuint, Media::kSamplerStateCount> samplers_{};
  // Image units with a texture bound: a draw then writes images as well.
  std::uint32_t boundImages_ = 0;
  // What shaders wrote to images is not seen by later work until a barrier of that
  // work's kind; these are the kinds still owed one.
  GLbitfield owedBarriers_ = 0;
  bool colorMasked_ = false;
  std::map<Media::GpuId, PendingRead> reads_;
  // Buffers of finished read-backs, kept mapped for the next frame of the same size: an
  // export reads every frame back, and would otherwise make and map a buffer for each.
  std::vector<PendingRead> spareReads_;
};

}  // namespace Platform
