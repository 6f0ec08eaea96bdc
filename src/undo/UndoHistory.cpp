#include "undo/UndoHistory.h"

#include <algorithm>
#include <utility>

namespace Undo {

void UndoHistory::push(UndoRecord record, std::int32_t limit) {
  while (position_ > 0) {
    records_.pop_front();
    --position_;
  }
  records_.push_front(std::move(record));
  const std::size_t kept = static_cast<std::size_t>(std::max(limit, 0));
  while (records_.size() > kept) {
    droppedSerial_ = records_.back().serial;
    records_.pop_back();
  }
}

std::uint64_t UndoHistory::appliedSerial() const noexcept {
  return position_ < records_.size() ? records_[position_].serial : droppedSerial_;
}

}  // namespace Undo
