// The one kind of undo item: a shared target and two states of one kind. Sharing the
// target keeps a deleted object (or row info, or effect) alive for as long as a record
// can bring it back. The undo service makes these; main thread only.
#pragma once

#include <memory>
#include <utility>

#include "undo/UndoItem.h"

namespace Undo {

// A state is a small record of the fields of one kind of change. It offers
//   void store(const Target& target);                      read the target
//   void restore(const std::shared_ptr<Target>& target,
//                Edit::EditSection& section) const;        write it back, ask notifications
//   bool equal(const State& other) const;
// and may offer `static bool commit(State& before, State& after)`, which compares and
// frees what the two have in common. Both states are built from the same arguments, so
// a state can carry what it needs to read its target (the scene of a row, for one).
template <class Target, class State>
class UndoItemTemplate final : public UndoItem {
 public:
  template <class... Args>
  explicit UndoItemTemplate(std::shared_ptr<Target> target, const Args&... stateArgs)
      : target_(std::move(target)), before_(stateArgs...), after_(stateArgs...) {
    storeBefore();
  }

  bool commit() override {
    storeAfter();
    if constexpr (requires { State::commit(before_, after_); }) {
      return State::commit(before_, after_);
    } else {
      return !before_.equal(after_);
    }
  }
  void storeBefore() override { before_.store(*target_); }
  void storeAfter() override { after_.store(*target_); }
  void restoreBefore(Edit::EditSection& section) override { before_.restore(target_, section); }
  void restoreAfter(Edit::EditSection& section) override { after_.restore(target_, section); }

  const std::shared_ptr<Target>& target() const noexcept { return target_; }
  // Registrations whose before-state is not what the target shows now (a created
  // object was not in the scene before) write it here.
  State& before() noexcept { return before_; }
  const State& before() const noexcept { return before_; }
  const State& after() const noexcept { return after_; }

 private:
  std::shared_ptr<Target> target_;
  State before_;
  State after_;
};

}  // namespace Undo
