// The read-back path: the pixels of a GPU texture copied into memory the CPU can read.
// Slow by nature, for export and script access only. GPU thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "media/Format.h"
#include "media/GraphicsBackend.h"

namespace Media {

class GraphicsDevice;

class CpuAccessBuffer {
 public:
  CpuAccessBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format);

  // Copies a texture of this buffer's size and format.
  void copyResource(GpuId texture);

  std::uint32_t width() const noexcept { return width_; }
  std::uint32_t height() const noexcept { return height_; }
  // Tight rows of the CPU image of the format, top row first.
  std::size_t rowPitch() const noexcept { return rowBytes(format_, width_); }
  const std::vector<std::byte>& data() const noexcept { return data_; }
  std::vector<std::byte> takeData() noexcept { return std::move(data_); }

 private:
  GraphicsDevice* device_;
  std::uint32_t width_;
  std::uint32_t height_;
  Format format_;
  std::vector<std::byte> data_;
};

}  // namespace Media
