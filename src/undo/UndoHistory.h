// The undo history of one scene: its records, newest first, how many of them are
// undone, and where the history stood when the project was last saved. Owned by the
// undo service, one for each scene; main thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "undo/UndoItem.h"

namespace Undo {

// What one user action changed, in the order its targets were registered. The serial
// is unique in the process, so a position of a history can be named exactly.
struct UndoRecord {
  std::uint64_t serial = 0;
  std::vector<std::unique_ptr<UndoItem>> items;
};

class UndoHistory {
 public:
  bool canUndo() const noexcept { return position_ < records_.size(); }
  bool canRedo() const noexcept { return position_ > 0; }
  std::size_t size() const noexcept { return records_.size(); }
  std::size_t position() const noexcept { return position_; }

  // Drops the undone records, puts `record` at the front and drops the oldest records
  // until at most `limit` are left (none for a limit below 1).
  void push(UndoRecord record, std::int32_t limit);

  // The record that undo would take back, or null.
  UndoRecord* nextUndo() noexcept { return canUndo() ? &records_[position_] : nullptr; }
  // The record that redo would apply again, or null.
  UndoRecord* nextRedo() noexcept { return canRedo() ? &records_[position_ - 1] : nullptr; }
  // Move the position by one record; the caller has checked that it can.
  void stepBack() noexcept { ++position_; }
  void stepForward() noexcept { --position_; }

  // The serial of the newest record whose change is in the model now; 0 when no record
  // ever was. A record dropped for the limit still counts: its change stays applied.
  std::uint64_t appliedSerial() const noexcept;
  // Remembers the present position as the saved one.
  void markSaved() noexcept { savedSerial_ = appliedSerial(); }
  bool atSaved() const noexcept { return appliedSerial() == savedSerial_; }

 private:
  // Front: the newest record.
  std::deque<UndoRecord> records_;
  // Records from the front that are undone.
  std::size_t position_ = 0;
  // The serial of the newest record that the limit dropped from the back.
  std::uint64_t droppedSerial_ = 0;
  std::uint64_t savedSerial_ = 0;
};

}  // namespace Undo
