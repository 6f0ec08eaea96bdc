// A vertex shader and the input layout its signature asks for. Loaded on the GPU thread;
// drawn with by the pixel shaders' draw function and by the vertex lists.
#pragma once

#include <cstdint>
#include <vector>

#include "media/CompiledShader.h"
#include "media/GraphicsBackend.h"
#include "media/InputLayout.h"

namespace Media {

class GraphicsDevice;

class VertexShader {
 public:
  explicit VertexShader(GraphicsDevice& device);
  ~VertexShader();
  VertexShader(const VertexShader&) = delete;
  VertexShader& operator=(const VertexShader&) = delete;

  // Any thread: the program and its input layout are made on the GPU thread.
  void load(const CompiledShader& shader);

  GpuId shader() const noexcept { return shader_; }
  GpuId inputLayout() const noexcept { return inputLayout_; }
  std::uint32_t stride() const noexcept { return stride_; }
  // Makes this shader current, unless it already is.
  void use();

 private:
  void create(const CompiledShader& shader);
  void release() noexcept;

  GraphicsDevice* device_;
  GpuId shader_ = 0;
  GpuId inputLayout_ = 0;
  std::uint32_t stride_ = 0;
};

}  // namespace Media
