#include "media/surface/SurfaceShaders.h"

#include <optional>

#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/pass/BlendStateTable.h"
#include "media/surface/SurfaceShaderSources.h"

namespace Media {

namespace {

// Empties the texture units of a draw and releases the target, also when the draw
// throws, so that the target may be the source of the next pass at once.
class SurfaceBindings {
 public:
  explicit SurfaceBindings(GraphicsDevice& device) : device_(device) {}
  ~SurfaceBindings() {
    device_.backend().bindTexture(kSurfaceTextureUnit, 0);
    device_.backend().bindTexture(kSurfaceFrameUnit, 0);
    device_.clearRenderTarget();
  }
  SurfaceBindings(const SurfaceBindings&) = delete;
  SurfaceBindings& operator=(const SurfaceBindings&) = delete;

 private:
  GraphicsDevice& device_;
};

}  // namespace

SurfaceShaders::SurfaceShaders(GraphicsDevice& device) : device_(&device), textured_(device), colored_(device) {
  textured_.vertex.load(texturedSurfaceVertexShader());
  textured_.pixel.load(texturedSurfacePixelShader());
  colored_.vertex.load(coloredSurfaceVertexShader());
  colored_.pixel.load(coloredSurfacePixelShader());
}

SurfaceShaders::~SurfaceShaders() = default;

void SurfaceShaders::drawTextured(RenderBuffer& target, const VertexListTemplate<XYZ_UV>& vertices,
                                  ResourceBuffer& texture, const ConstantBufferCommon& constants,
                                  const SurfaceDrawOptions& options) {
  device_->setRenderTarget(target);
  draw(textured_, vertices, &texture, constants, options);
}

void SurfaceShaders::drawTextured(ResourceBuffer& target, const VertexListTemplate<XYZ_UV>& vertices,
                                  ResourceBuffer& texture, const ConstantBufferCommon& constants,
                                  const SurfaceDrawOptions& options) {
  device_->setRenderTarget(target);
  draw(textured_, vertices, &texture, constants, options);
}

void SurfaceShaders::drawColored(RenderBuffer& target, const VertexListTemplate<XYZ_COL>& vertices,
                                 const ConstantBufferCommon& constants, const SurfaceDrawOptions& options) {
  device_->setRenderTarget(target);
  draw(colored_, vertices, nullptr, constants, options);
}

void SurfaceShaders::drawColored(ResourceBuffer& target, const VertexListTemplate<XYZ_COL>& vertices,
                                 const ConstantBufferCommon& constants, const SurfaceDrawOptions& options) {
  device_->setRenderTarget(target);
  draw(colored_, vertices, nullptr, constants, options);
}

void SurfaceShaders::draw(Pair& pair, const VertexList& vertices, ResourceBuffer* texture,
                          const ConstantBufferCommon& constants, const SurfaceDrawOptions& options) {
  SurfaceBindings bindings(*device_);
  GraphicsBackend& backend = device_->backend();
  backend.bindConstantBuffer(kSurfaceConstantBinding, constants.buffer());
  if (texture) {
    backend.bindTexture(kSurfaceTextureUnit, texture->texture());
    backend.bindSampler(kSurfaceTextureUnit, options.samplerState);
  }
  if (options.frameCopy) backend.bindTexture(kSurfaceFrameUnit, options.frameCopy->texture());
  device_->setRasterizerState(options.rasterizerState);
  device_->setBlendState(kBlendStateSourceOver, std::nullopt);
  pair.vertex.use();
  pair.pixel.use();
  vertices.draw(*device_);
}

}  // namespace Media
