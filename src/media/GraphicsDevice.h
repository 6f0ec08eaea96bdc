// The one graphics device of the program. It owns the GPU context through a back end
// and the one thread on which that context is current: everything that touches the GPU
// runs there. Other threads hand work to it with run(), which waits and rethrows what
// the work threw. It also remembers the pipeline state last set, so that a run of like
// passes costs only the draws; whoever sets state through the back end by other means
// must go through the setters here to keep that memory true. Any thread may call run(),
// post() and the settings; everything else belongs to the GPU thread, and reaching the
// back end from another thread throws rather than let the API fail silently there.
#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "media/Format.h"
#include "media/GraphicsBackend.h"

namespace Media {

class FrameDrawResources;
class RenderBuffer;
class ResourceBuffer;

// What the start reads from the configuration; the application passes it in.
struct DeviceSettings {
  Format pixelFormat = Format::Rgba16Float;
  Format maskFormat = Format::A8Unorm;
  std::uint32_t shadowBufferSize = 0;
  // Shows the start's warnings to the user where a display exists; they are logged in
  // any case. `renderer` names the GPU's renderer, so a warning can be told once for it.
  std::function<void(const std::string& text, const std::string& renderer)> warnUser;
};

class GraphicsDevice {
 public:
  using BackendFactory = std::function<std::unique_ptr<GraphicsBackend>()>;

  // Starts the GPU thread, creates the back end there and logs what it found. A back end
  // that cannot start throws here, on the calling thread.
  GraphicsDevice(BackendFactory factory, DeviceSettings settings);
  ~GraphicsDevice();
  GraphicsDevice(const GraphicsDevice&) = delete;
  GraphicsDevice& operator=(const GraphicsDevice&) = delete;

  Format pixelFormat() const noexcept { return settings_.pixelFormat; }
  Format maskFormat() const noexcept { return settings_.maskFormat; }
  std::uint32_t sampleCount() const noexcept { return 1; }
  std::uint32_t shadowBufferSize() const noexcept { return settings_.shadowBufferSize; }
  // Whether a texture of this format may be drawn to and written as an image.
  bool isDrawable(Format format) const noexcept;

  bool isGpuThread() const noexcept { return std::this_thread::get_id() == thread_.get_id(); }
  // Runs `work` on the GPU thread and waits for it; on the GPU thread it runs at once.
  void run(const std::function<void()>& work);
  // Queues `work` for the GPU thread without waiting.
  void post(std::function<void()> work);
  // Releases GPU objects: at once on the GPU thread, else queued for it, so that an
  // owner may be destroyed on any thread while the device lives.
  void releaseOnGpu(std::function<void()> work);

  // The back end, on the GPU thread. Elsewhere it throws: a GL call there would act on
  // no context and hand out id 0 without a word.
  GraphicsBackend& backend();

  // Draws into `buffer` from now on, over its whole size. A mask takes alpha alone.
  void setRenderTarget(RenderBuffer& buffer);
  void setRenderTarget(ResourceBuffer& buffer);
  // One render target and read-write images at consecutive units from firstSlot.
  void setRenderTargetAndUnorderedAccess(RenderBuffer& buffer, std::uint32_t firstSlot,
                                         std::initializer_list<ResourceBuffer*> views);
  // Records `buffer` as the read-write image of register `slot`; a shader binds it at
  // its own image unit when it runs, in a program made for the buffer's format. The
  // frame itself, a render buffer in the pixel format, is written in place this way.
  void setComputeTarget(std::uint32_t slot, ResourceBuffer& buffer);
  void setComputeTarget(std::uint32_t slot, RenderBuffer& buffer);
  struct ImageView {
    GpuId texture = 0;
    Format format = Format::Unknown;
  };
  ImageView imageAt(std::uint32_t slot) const noexcept;
  // Forgets a texture that is being destroyed wherever it is recorded as an image, since
  // the API reuses its ids.
  void forgetImage(GpuId texture) noexcept;
  // Unbinds the render target: after it, what was drawn may be read.
  void clearRenderTarget();

  // Pipeline state, each skipped when it equals the one last set. A blend state is set
  // again whenever a factor is given, since the factor is not part of the memory.
  void setRasterizerState(std::size_t index);
  void setBlendState(std::size_t index, const std::optional<Color>& factor);
  void useShader(ShaderStage stage, GpuId shader);
  // The input layout of the current vertex shader, which vertex lists draw with.
  void setInputLayout(GpuId layout) noexcept { inputLayout_ = layout; }
  GpuId inputLayout() const noexcept { return inputLayout_; }
  // Destroys a program and forgets it as current, since the API reuses its ids.
  void destroyShader(ShaderStage stage, GpuId shader);
  // The sampler state that pixel and compute shaders get at sampler slot `slot`. An unset
  // slot samples linearly with clamped edges (state 1).
  void setSampler(std::uint32_t slot, std::size_t state);
  std::size_t samplerAt(std::uint32_t slot) const noexcept;

  // Draws `count` vertices of `stride` bytes from `data` through a buffer made for the
  // draw and released after it.
  void drawVertices(Topology topology, GpuId inputLayout, const void* data, std::uint32_t stride, std::uint32_t count);
  // The same as a list of points, with the input layout of the current vertex shader.
  void drawPoints(const void* data, std::uint32_t stride, std::uint32_t count);
  // The shared buffer that a single quad is rewritten into: six vertices of up to ten floats.
  GpuId singleQuadBuffer();
  // The vertex shaders and full-frame lists of the frame passes, made at first use.
  FrameDrawResources& frameDraw();
  void finish();

 private:
  static constexpr std::size_t kSamplerSlots = 16;
  static constexpr std::size_t kImageSlots = 8;

  void loop();
  void requireGpuThread(const char* place) const;
  // Logs what the back end found; returns the warning the user should see, if any.
  std::string logStart();

  DeviceSettings settings_;
  std::unique_ptr<GraphicsBackend> backend_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::function<void()>> queue_;
  bool stopping_ = false;
  std::thread thread_;

  std::optional<std::size_t> rasterizerState_;
  std::optional<std::size_t> blendState_;
  std::array<GpuId, 3> shaders_{};
  GpuId inputLayout_ = 0;
  std::array<std::size_t, kSamplerSlots> samplers_{};
  std::array<ImageView, kImageSlots> images_{};
  GpuId singleQuadBuffer_ = 0;
  std::unique_ptr<FrameDrawResources> frameDraw_;
};

}  // namespace Media
