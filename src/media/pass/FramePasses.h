// Runs the frame passes on the device, by either of two paths that give the same pixels:
// a full-frame draw with fixed-function blending, or a compute dispatch that applies the
// blend state in the shader. Which is faster depends on the GPU (compute wins by far on
// large discrete GPUs, draws can win on a CPU renderer), so the device measures once and
// keeps the faster. Shaders are made at their first use. GPU thread only.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <span>
#include <utility>

#include "media/PixelShader.h"
#include "media/pass/FramePassTable.h"

namespace Media {

class ComputeShader;
class ConstantBufferCommon;
class GraphicsDevice;
class ResourceBuffer;

enum class FramePassPath : std::uint8_t { Draw, Compute };

class FramePasses {
 public:
  explicit FramePasses(GraphicsDevice& device);
  ~FramePasses();
  FramePasses(const FramePasses&) = delete;
  FramePasses& operator=(const FramePasses&) = delete;

  FramePassPath path() const noexcept { return path_; }
  void setPath(FramePassPath path) noexcept { path_ = path; }

  // Runs `pass` over the whole of `target` with sources at registers 0 and 1, under the
  // blend state of `options` (none given: no blending). The compute path serves float
  // targets only; a normalised target is always drawn, because fixed-function blending
  // clamps there and the shader would not.
  void run(FramePass pass, ResourceBuffer& target, std::initializer_list<ResourceBuffer*> sources = {},
           const PassOptions& options = {});
  void run(FramePass pass, FramePassPath path, ResourceBuffer& target,
           std::initializer_list<ResourceBuffer*> sources = {}, const PassOptions& options = {});

  // Composes `layers` over `target` source-over, layer 0 first. On the compute path one
  // dispatch reads up to 16 layers and the target once and writes the target once; on
  // the draw path each layer is one pass 2 draw under blend state 0.
  void composeSourceOver(ResourceBuffer& target, std::span<ResourceBuffer* const> layers);
  void composeSourceOver(ResourceBuffer& target, std::span<ResourceBuffer* const> layers, FramePassPath path);

  // Times a source-over copy of a width by height frame by both paths, keeps the faster
  // as path() and returns it.
  FramePassPath measureFasterPath(std::uint32_t width, std::uint32_t height);

  PixelShader& pixelShader(FramePass pass);

 private:
  ComputeShader& computeShader(FramePass pass, std::size_t blendState);
  ComputeShader& sourceOverShader(std::uint32_t layerCount);
  void dispatch(FramePass pass, ResourceBuffer& target, std::initializer_list<ResourceBuffer*> sources,
                const PassOptions& options);
  bool computable(const ResourceBuffer& target) const noexcept;

  GraphicsDevice* device_;
  FramePassPath path_ = FramePassPath::Draw;
  std::array<std::unique_ptr<PixelShader>, kFramePassCount> pixelShaders_;
  std::map<std::pair<FramePass, std::size_t>, std::unique_ptr<ComputeShader>> computeShaders_;
  std::array<std::unique_ptr<ComputeShader>, 16> sourceOverShaders_;
  std::unique_ptr<ConstantBufferCommon> blendFactor_;
};

}  // namespace Media
