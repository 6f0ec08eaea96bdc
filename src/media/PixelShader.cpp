#include "media/PixelShader.h"

#include <array>

#include "media/ConstantBufferCommon.h"
#include "media/FrameDrawResources.h"
#include "media/GraphicsDevice.h"
#include "media/InputLayout.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"

namespace Media {

namespace {

constexpr std::size_t kMaxSources = 8;

// Puts the texture units of a draw back to empty and releases the target, also when the
// draw throws, so that no buffer stays bound as source or target after a pass.
class PassBindings {
 public:
  PassBindings(GraphicsDevice& device, const CompiledShader& shader) : device_(device), shader_(shader) {}
  ~PassBindings() {
    for (std::size_t i = 0; i < bound_; ++i) device_.backend().bindTexture(units_[i], 0);
    device_.clearRenderTarget();
  }
  PassBindings(const PassBindings&) = delete;
  PassBindings& operator=(const PassBindings&) = delete;

  void bindSources(const GpuId* sources, std::size_t count) {
    for (const ShaderTextureBinding& binding : shader_.textures) {
      if (binding.textureSlot >= count || bound_ == units_.size()) continue;
      device_.backend().bindTexture(binding.unit, sources[binding.textureSlot]);
      units_[bound_++] = binding.unit;
      if (binding.samplerSlot >= 0) {
        device_.backend().bindSampler(binding.unit, device_.samplerAt(static_cast<std::uint32_t>(binding.samplerSlot)));
      }
    }
  }

 private:
  GraphicsDevice& device_;
  const CompiledShader& shader_;
  std::array<std::uint32_t, 16> units_{};
  std::size_t bound_ = 0;
};

// The textures of a draw's sources, at most as many as a pass binds.
struct SourceTextures {
  explicit SourceTextures(std::initializer_list<ResourceBuffer*> sources) {
    for (ResourceBuffer* source : sources) {
      if (count < ids.size()) ids[count++] = source->texture();
    }
  }
  std::array<GpuId, kMaxSources> ids{};
  std::size_t count = 0;
};

}  // namespace

PixelShader::PixelShader(GraphicsDevice& device) : device_(&device) {}

PixelShader::~PixelShader() = default;

void PixelShader::load(const CompiledShader& shader) {
  // Loading may happen on any thread; the program is made on the GPU thread.
  device_->run([&] {
    programs_ = std::make_unique<ShaderVariants>(*device_, shader, "glCreateShaderProgramv",
                                                 "Media::PixelShader::loadFromMemory");
  });
  path_ = drawPathFor(shader.inputs);
  drawFunction_ = nullptr;
  if (path_ == DrawPath::None) return;
  const std::uint32_t components = path_ == DrawPath::PositionTexCoord
                                       ? inputComponentCount(shader.inputs[1].mask, shader.inputs[1].semanticName)
                                       : 0;
  drawFunction_ = [this, components](std::size_t blendState, const std::optional<Color>& blendFactor) {
    device_->setRasterizerState(0);
    device_->setBlendState(blendState, blendFactor);
    FrameDrawResources& frame = device_->frameDraw();
    VertexShader& vertices = path_ == DrawPath::Position ? frame.positionShader() : frame.texCoordShader(components);
    vertices.use();
    use();
    const GpuId list = path_ == DrawPath::Position ? frame.positionList() : frame.texCoordList();
    device_->backend().draw(Topology::TriangleStrip, vertices.inputLayout(), list, vertices.stride(),
                            FrameDrawResources::kVertexCount);
    unbindImages();
  };
}

void PixelShader::use() { device_->useShader(ShaderStage::Pixel, programs_->bindImagesAndGetProgram()); }

void PixelShader::unbindImages() { programs_->unbindImages(); }

void PixelShader::drawFrame(const PassOptions& options, const GpuId* sources, std::size_t count) {
  const CompiledShader& shader = programs_->source();
  PassBindings bindings(*device_, shader);
  if (options.constants) {
    for (const ShaderConstantBinding& constant : shader.constants) {
      if (constant.slot == 0) {
        device_->backend().bindConstantBuffer(constant.binding, options.constants->bufferFor(constant.sizeInBytes));
      }
    }
  }
  bindings.bindSources(sources, count);
  drawFunction_(options.blendState.value_or(kBlendStateNone), options.blendFactor);
}

void PixelShader::draw(PassTarget target, std::initializer_list<ResourceBuffer*> sources, const PassOptions& options) {
  const SourceTextures textures(sources);
  target.setRenderTarget(*device_);
  drawFrame(options, textures.ids.data(), textures.count);
}

void PixelShader::draw(PassTarget target, RenderBuffer& source, const PassOptions& options) {
  const GpuId texture = source.shaderResourceView();
  target.setRenderTarget(*device_);
  drawFrame(options, &texture, 1);
}

void PixelShader::draw(PassTarget target, GpuId source, const PassOptions& options) {
  target.setRenderTarget(*device_);
  drawFrame(options, &source, 1);
}

}  // namespace Media
