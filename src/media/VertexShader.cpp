#include "media/VertexShader.h"

#include "media/GraphicsDevice.h"

namespace Media {

VertexShader::VertexShader(GraphicsDevice& device) : device_(&device) {}

VertexShader::~VertexShader() { release(); }

void VertexShader::release() noexcept {
  if (shader_ || inputLayout_) {
    device_->releaseOnGpu([device = device_, shader = shader_, layout = inputLayout_] {
      if (shader) device->destroyShader(ShaderStage::Vertex, shader);
      if (layout) device->backend().destroyInputLayout(layout);
    });
  }
  shader_ = 0;
  inputLayout_ = 0;
}

void VertexShader::load(const CompiledShader& shader) {
  // Loading may happen on any thread; the program is made on the GPU thread.
  device_->run([&] { create(shader); });
}

void VertexShader::create(const CompiledShader& shader) {
  GraphicsBackend& backend = device_->backend();
  const GpuId program = backend.createShader(ShaderStage::Vertex, shader.glsl, "glCreateShaderProgramv",
                                             "Media::VertexShader::loadFromMemory");
  const std::vector<InputElement> layout = inputLayoutFor(shader.inputs);
  GpuId inputLayout = 0;
  try {
    inputLayout = backend.createInputLayout(layout, "Media::VertexShader::createInputLayout");
  } catch (...) {
    backend.destroyShader(program);
    throw;
  }
  release();
  shader_ = program;
  inputLayout_ = inputLayout;
  stride_ = inputLayoutStride(layout);
}

void VertexShader::use() {
  device_->useShader(ShaderStage::Vertex, shader_);
  device_->setInputLayout(inputLayout_);
}

}  // namespace Media
