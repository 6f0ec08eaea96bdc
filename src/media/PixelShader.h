// A pixel shader and the family of whole-frame draws through it. Each draw sets the
// target, binds the sources at texture registers from 0, runs the draw function and
// unbinds what it bound, so that what was drawn can be the source of the next pass at
// once. Loaded on any thread, used on the GPU thread; may be destroyed on any thread
// while the device lives.
#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>

#include "media/CompiledShader.h"
#include "media/DrawPath.h"
#include "media/GraphicsBackend.h"
#include "media/PassTarget.h"
#include "media/ShaderVariants.h"

namespace Media {

class ConstantBufferCommon;
class GraphicsDevice;
class RenderBuffer;
class ResourceBuffer;

// What a draw may add: constants at register b0, a blend state (no blending where none
// is given) and a blend factor.
struct PassOptions {
  const ConstantBufferCommon* constants = nullptr;
  std::optional<std::size_t> blendState;
  std::optional<Color> blendFactor;
};

class PixelShader {
 public:
  using DrawFunction = std::function<void(std::size_t blendState, const std::optional<Color>& blendFactor)>;

  explicit PixelShader(GraphicsDevice& device);
  ~PixelShader();
  PixelShader(const PixelShader&) = delete;
  PixelShader& operator=(const PixelShader&) = delete;

  // Creates the program and chooses the draw function from the signature. A shader with
  // another signature loads, and calling its draw function throws std::bad_function_call.
  void load(const CompiledShader& shader);

  DrawPath drawPath() const noexcept { return path_; }
  const DrawFunction& drawFunction() const noexcept { return drawFunction_; }
  // Makes this shader current, with the read-write images the device holds now; whoever
  // draws with it by other means empties the image units afterwards.
  void use();
  void unbindImages();

  void draw(PassTarget target, std::initializer_list<ResourceBuffer*> sources = {}, const PassOptions& options = {});
  void draw(PassTarget target, RenderBuffer& source, const PassOptions& options = {});
  // A source given by its shader resource view.
  void draw(PassTarget target, GpuId source, const PassOptions& options = {});

 private:
  void drawFrame(const PassOptions& options, const GpuId* sources, std::size_t count);

  GraphicsDevice* device_;
  std::unique_ptr<ShaderVariants> programs_;
  DrawPath path_ = DrawPath::None;
  DrawFunction drawFunction_;
};

}  // namespace Media
