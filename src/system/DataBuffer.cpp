#include "system/DataBuffer.h"

#include <cerrno>
#include <new>

#include "system/Exception.h"

namespace System {

void DataBuffer::allocMemory(std::size_t size) {
  if (capacity_ >= size && data_) {
    size_ = size;
    return;
  }
  freeMemory();
  data_.reset(new (std::nothrow) std::uint8_t[size == 0 ? 1 : size]);
  if (!data_) throw ErrorCodeException("System::DataBuffer::allocMemory", ENOMEM);
  capacity_ = size;
  size_ = size;
}

void DataBuffer::freeMemory() noexcept {
  data_.reset();
  size_ = 0;
  capacity_ = 0;
}

}  // namespace System
