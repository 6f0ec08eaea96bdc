// The constants of a shader: a uniform block whose bytes keep the source's packing
// (rows of 16 bytes). Contents are given at creation; update() rewrites them in place.
// Used on the GPU thread; may be destroyed on any thread while the device lives.
#pragma once

#include <cstddef>

#include "media/GraphicsBackend.h"

namespace Media {

class GraphicsDevice;

class ConstantBufferCommon {
 public:
  explicit ConstantBufferCommon(GraphicsDevice& device);
  ~ConstantBufferCommon();
  ConstantBufferCommon(const ConstantBufferCommon&) = delete;
  ConstantBufferCommon& operator=(const ConstantBufferCommon&) = delete;

  // A new buffer with these contents, replacing any earlier one.
  void create(const void* data, std::size_t size);
  template <class T>
  void create(const T& value) {
    create(&value, sizeof(T));
  }
  // New contents of the created size.
  void update(const void* data);

  GpuId buffer() const noexcept { return buffer_; }
  std::size_t size() const noexcept { return size_; }

 private:
  void release() noexcept;

  GraphicsDevice* device_;
  GpuId buffer_ = 0;
  std::size_t size_ = 0;
};

}  // namespace Media
