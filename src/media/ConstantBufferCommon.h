// The constants of a shader: a uniform block whose bytes keep the source's packing
// (rows of 16 bytes). Contents are given at creation; update() rewrites them in place.
// A block that the shader declares longer than the contents reads zeros past them, as
// a short buffer always read. Made and updated on any thread (the GPU work is handed to
// the GPU thread), bound on the GPU thread, destroyed on any while the device lives.
#pragma once

#include <cstddef>
#include <vector>

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
  std::size_t size() const noexcept { return bytes_.size(); }
  // What to bind for a block of `blockSize` bytes: the buffer itself, or where it is
  // shorter a copy padded with zeros to the block's size, kept until the contents
  // change. GPU thread only.
  GpuId bufferFor(std::size_t blockSize) const;

 private:
  void release() noexcept;
  void releasePadded() const noexcept;

  GraphicsDevice* device_;
  std::vector<std::byte> bytes_;
  GpuId buffer_ = 0;
  // A cache of what bufferFor made; it does not change what the constants are.
  mutable GpuId padded_ = 0;
  mutable std::size_t paddedSize_ = 0;
};

}  // namespace Media
