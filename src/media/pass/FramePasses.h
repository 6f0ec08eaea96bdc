// Runs the frame passes on the device, by either of two paths that give the same pixels:
// a full-frame draw with fixed-function blending, or a compute dispatch that applies the
// blend state in the shader. Which is faster depends on the GPU and on the work (compute
// wins by far on large discrete GPUs; on a CPU renderer single passes may be faster as
// draws while a fused composition is faster as one dispatch), so each kind of pass, and
// the composition apart, keeps its own choice: measured at its first use on a frame of
// the measuring size, with the caller's own sources and constants. Targets are resource
// buffers or the frame itself. Shaders are made at their first use. GPU thread only.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <tuple>
#include <utility>

#include "media/PassTarget.h"
#include "media/PixelShader.h"
#include "media/pass/FramePassTable.h"
#include "media/pass/TexelLayout.h"

namespace Media {

class ComputeShader;
class ConstantBufferCommon;
class GraphicsDevice;
class ResourceBuffer;

enum class FramePassPath : std::uint8_t { Draw, Compute };

class FramePasses {
 public:
  // Choices are measured on frames of `measureWidth` by `measureHeight`: the size of
  // the frames the program composes.
  FramePasses(GraphicsDevice& device, std::uint32_t measureWidth, std::uint32_t measureHeight);
  ~FramePasses();
  FramePasses(const FramePasses&) = delete;
  FramePasses& operator=(const FramePasses&) = delete;

  // The path a pass or the composition takes; empty until measured or chosen.
  std::optional<FramePassPath> chosenPath(FramePass pass) const noexcept;
  std::optional<FramePassPath> chosenCompositionPath() const noexcept { return compositionPath_; }
  // Fixes a choice beforehand, so that it is never measured.
  void choosePath(FramePass pass, FramePassPath path) noexcept;
  void chooseCompositionPath(FramePassPath path) noexcept { compositionPath_ = path; }

  // Runs `pass` over the whole of `target` with sources at registers 0 and 1, under the
  // blend state of `options` (none given: no blending). The compute path serves float
  // targets only; a normalised target is always drawn, because fixed-function blending
  // clamps there and the shader would not.
  void run(FramePass pass, PassTarget target, std::initializer_list<ResourceBuffer*> sources = {},
           const PassOptions& options = {});
  void run(FramePass pass, FramePassPath path, PassTarget target, std::initializer_list<ResourceBuffer*> sources = {},
           const PassOptions& options = {});

  // Composes `layers` over `target` source-over, layer 0 first. On the compute path one
  // dispatch reads up to 16 layers and the target once and writes the target once; on
  // the draw path each layer is one pass 2 draw under blend state 0.
  void composeSourceOver(PassTarget target, std::span<ResourceBuffer* const> layers);
  void composeSourceOver(PassTarget target, std::span<ResourceBuffer* const> layers, FramePassPath path);

  PixelShader& pixelShader(FramePass pass);
  // The draw of `pass` with its sources' and its target's texels in other layouts, for
  // the conversions of CPU images.
  PixelShader& pixelShader(FramePass pass, TexelLayout sources, TexelLayout target);

 private:
  ComputeShader& computeShader(FramePass pass, std::size_t blendState);
  ComputeShader& sourceOverShader(std::uint32_t layerCount);
  void dispatch(FramePass pass, PassTarget target, std::initializer_list<ResourceBuffer*> sources,
                const PassOptions& options);
  static bool computable(Format format) noexcept;
  // Times `work` on a scratch frame of the measuring size in `format` by both paths and
  // returns the faster.
  template <class Work>
  FramePassPath measure(Format format, Work work);

  GraphicsDevice* device_;
  std::uint32_t measureWidth_;
  std::uint32_t measureHeight_;
  std::array<std::optional<FramePassPath>, kFramePassCount> paths_;
  std::optional<FramePassPath> compositionPath_;
  std::array<std::unique_ptr<PixelShader>, kFramePassCount> pixelShaders_;
  std::map<std::tuple<FramePass, TexelLayout, TexelLayout>, std::unique_ptr<PixelShader>> layoutShaders_;
  std::map<std::pair<FramePass, std::size_t>, std::unique_ptr<ComputeShader>> computeShaders_;
  std::array<std::unique_ptr<ComputeShader>, 16> sourceOverShaders_;
  std::unique_ptr<ConstantBufferCommon> blendFactor_;
};

}  // namespace Media
