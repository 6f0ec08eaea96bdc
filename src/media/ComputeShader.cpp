#include "media/ComputeShader.h"

#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"

namespace Media {

ComputeShader::ComputeShader(GraphicsDevice& device) : device_(&device) {}

ComputeShader::~ComputeShader() = default;

void ComputeShader::load(const CompiledShader& shader) {
  // Loading may happen on any thread; the program is made on the GPU thread.
  device_->run([&] {
    programs_ = std::make_unique<ShaderVariants>(*device_, shader, "glCreateShaderProgramv",
                                                 "Media::ComputeShader::loadFromMemory");
  });
}

void ComputeShader::dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z,
                             std::initializer_list<ResourceBuffer*> sources,
                             std::initializer_list<const ConstantBufferCommon*> constants) {
  const CompiledShader& shader = programs_->source();
  GraphicsBackend& backend = device_->backend();
  for (const ShaderConstantBinding& constant : shader.constants) {
    if (constant.slot < constants.size() && constants.begin()[constant.slot]) {
      backend.bindConstantBuffer(constant.binding, constants.begin()[constant.slot]->bufferFor(constant.sizeInBytes));
    }
  }
  for (const ShaderTextureBinding& binding : shader.textures) {
    if (binding.textureSlot >= sources.size()) continue;
    backend.bindTexture(binding.unit, sources.begin()[binding.textureSlot]->texture());
    if (binding.samplerSlot >= 0) {
      backend.bindSampler(binding.unit, device_->samplerAt(static_cast<std::uint32_t>(binding.samplerSlot)));
    }
  }
  device_->useShader(ShaderStage::Compute, programs_->bindImagesAndGetProgram());
  backend.dispatch(x, y, z);
  programs_->unbindImages();
  for (const ShaderTextureBinding& binding : shader.textures) {
    if (binding.textureSlot < sources.size()) backend.bindTexture(binding.unit, 0);
  }
}

}  // namespace Media
