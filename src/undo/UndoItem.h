// One entry of an undo record: the state of one target before and after an action.
// The undo service makes items when an edit registers its targets and restores them on
// undo and redo. Main thread only, inside an edit section.
#pragma once

namespace Edit {
class EditSection;
}

namespace Undo {

class UndoItem {
 public:
  UndoItem() = default;
  virtual ~UndoItem() = default;
  UndoItem(const UndoItem&) = delete;
  UndoItem& operator=(const UndoItem&) = delete;

  // Reads the after-state of the target; true if anything differs from the before-state.
  // What the comparison shows to be unchanged may be freed, so that a stored record
  // keeps only what the action changed.
  virtual bool commit() = 0;
  virtual void storeBefore() = 0;
  virtual void storeAfter() = 0;
  // Write a state back to the target and ask `section` for the notifications that the
  // change needs.
  virtual void restoreBefore(Edit::EditSection& section) = 0;
  virtual void restoreAfter(Edit::EditSection& section) = 0;
};

}  // namespace Undo
