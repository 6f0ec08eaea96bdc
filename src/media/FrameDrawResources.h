// The vertex side of the frame passes: three vertex shaders (position only; position and
// texture coordinates; two four-component inputs) and the lists that cover the whole
// frame. Owned by the device, made at first use, GPU thread only.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "media/CompiledShader.h"
#include "media/GraphicsBackend.h"
#include "media/VertexShader.h"

namespace Media {

class GraphicsDevice;

// The GLSL and signature of the built-in vertex shaders. The coordinates are handed to
// the pixel shader at location 0 with `components` floats (1 to 4), as its signature
// declares them, so that both sides of the interface agree.
CompiledShader positionVertexShader();
CompiledShader positionTexCoordVertexShader(std::uint32_t components);
CompiledShader twoVectorVertexShader();

class FrameDrawResources {
 public:
  explicit FrameDrawResources(GraphicsDevice& device);
  ~FrameDrawResources();
  FrameDrawResources(const FrameDrawResources&) = delete;
  FrameDrawResources& operator=(const FrameDrawResources&) = delete;

  VertexShader& positionShader();
  VertexShader& texCoordShader(std::uint32_t components);
  VertexShader& twoVectorShader();

  // Four corners as a strip, top left, top right, bottom left, bottom right.
  static constexpr std::uint32_t kVertexCount = 4;
  GpuId positionList() const noexcept { return positionList_; }
  GpuId texCoordList() const noexcept { return texCoordList_; }

 private:
  GraphicsDevice* device_;
  std::unique_ptr<VertexShader> position_;
  std::array<std::unique_ptr<VertexShader>, 4> texCoord_;
  std::unique_ptr<VertexShader> twoVector_;
  GpuId positionList_ = 0;
  GpuId texCoordList_ = 0;
};

}  // namespace Media
