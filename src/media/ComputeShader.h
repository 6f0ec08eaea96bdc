// A compute shader. Its read-write images are those the device holds at the shader's
// image registers (setComputeTarget); sources and constants are given to dispatch.
// Loaded on any thread, used on the GPU thread; may be destroyed on any thread while the
// device lives.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>

#include "media/CompiledShader.h"
#include "media/ShaderVariants.h"

namespace Media {

class ConstantBufferCommon;
class GraphicsDevice;
class ResourceBuffer;

class ComputeShader {
 public:
  explicit ComputeShader(GraphicsDevice& device);
  ~ComputeShader();
  ComputeShader(const ComputeShader&) = delete;
  ComputeShader& operator=(const ComputeShader&) = delete;

  void load(const CompiledShader& shader);
  const CompiledShader& source() const noexcept { return programs_->source(); }

  // Runs x by y by z thread groups. Sources are bound at texture registers from 0 and
  // unbound afterwards; constants at registers b0, b1, ... in order (null skips one).
  // What the dispatch wrote is visible to whatever draws, dispatches or reads next.
  void dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z, std::initializer_list<ResourceBuffer*> sources = {},
                std::initializer_list<const ConstantBufferCommon*> constants = {});

 private:
  GraphicsDevice* device_;
  std::unique_ptr<ShaderVariants> programs_;
};

}  // namespace Media
