// A growable byte buffer that keeps its memory while the capacity suffices.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace System {

class DataBuffer {
 public:
  // Sets the used size to `size`, reallocating only when the capacity is too small.
  // The contents are not kept across a reallocation.
  void allocMemory(std::size_t size);
  void freeMemory() noexcept;

  std::uint8_t* data() noexcept { return data_.get(); }
  const std::uint8_t* data() const noexcept { return data_.get(); }
  std::size_t size() const noexcept { return size_; }
  std::size_t capacity() const noexcept { return capacity_; }

 private:
  std::unique_ptr<std::uint8_t[]> data_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace System
