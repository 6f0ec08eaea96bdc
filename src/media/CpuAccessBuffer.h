// The read-back path: the pixels of a GPU texture copied into memory the CPU can read.
// Slow by nature, for export, the preview and script access. The copy is queued on the
// GPU thread and runs on the GPU while that thread goes on with the next frame; whoever
// wants the pixels waits for them on any thread, and the bytes are copied out there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "media/Format.h"
#include "media/GraphicsBackend.h"

namespace Media {

class GraphicsDevice;

class CpuAccessBuffer {
 public:
  CpuAccessBuffer(GraphicsDevice& device, std::uint32_t width, std::uint32_t height, Format format);
  ~CpuAccessBuffer();
  CpuAccessBuffer(const CpuAccessBuffer&) = delete;
  CpuAccessBuffer& operator=(const CpuAccessBuffer&) = delete;

  // Queues a copy of a texture of this buffer's size and format as it stands now; later
  // drawing into the texture does not reach the copy. GPU thread only.
  void copyResource(GpuId texture);

  std::uint32_t width() const noexcept { return width_; }
  std::uint32_t height() const noexcept { return height_; }
  // Tight rows of the CPU image of the format, top row first.
  std::size_t rowPitch() const noexcept { return rowBytes(format_, width_); }
  // The copied pixels, waiting for the copy first. Any thread; empty before copyResource.
  const std::vector<std::byte>& data();
  std::vector<std::byte> takeData();
  // The copied pixels written straight into rows `pitch` bytes apart (a CPU image),
  // waiting for the copy first. Any thread.
  void copyTo(std::byte* rows, std::size_t pitch);

 private:
  void release() noexcept;
  // Waits for the copy; the bytes stay valid until release(). Under the lock.
  const std::byte* waitForCopy();
  // From the copy's bytes, in which a mask has four bytes a pixel, to rows of the CPU image.
  void copyRows(const std::byte* mapped, std::byte* rows, std::size_t pitch) const;

  GraphicsDevice* device_;
  std::uint32_t width_;
  std::uint32_t height_;
  Format format_;
  std::mutex mutex_;
  GpuId read_ = 0;
  std::vector<std::byte> data_;
};

}  // namespace Media
