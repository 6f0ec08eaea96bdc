// What an undo record keeps of one effect: a copy of every item's value and the
// switches `disable` and `lock`. After the comparison at the end of an action only the
// items that changed keep their copy. Paired with the shared effect by the undo
// service (Undo::UndoItemTemplate); main thread only, inside an edit section.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace Edit {
class EditSection;
}

namespace Effect {

class EffectBase;
class EffectItem;

class EffectUndoUpdate {
 public:
  EffectUndoUpdate() = default;
  EffectUndoUpdate(EffectUndoUpdate&&) noexcept = default;
  EffectUndoUpdate& operator=(EffectUndoUpdate&&) noexcept = default;

  void store(const EffectBase& effect);
  // Gives the values back and asks for the panels, the time graph, the colour and the
  // text windows to look again. "different number of items." when the effect no longer
  // has as many items as were stored.
  void restore(const std::shared_ptr<EffectBase>& effect, Edit::EditSection& section) const;
  // The values alone, with no window told: a text box that is being typed into keeps
  // its focus and caret.
  void apply(EffectBase& effect) const;
  bool equal(const EffectUndoUpdate& other) const;
  // Frees the pairs of copies that are equal, leaving empty slots; true if an item or a
  // switch differs. "different number of items." when the two lists differ in length.
  static bool commit(EffectUndoUpdate& before, EffectUndoUpdate& after);

  // One slot per item of the effect, in item order; an empty slot is an unchanged item.
  const std::vector<std::unique_ptr<EffectItem>>& items() const noexcept { return items_; }
  // Whether the slot of item `index` is the only one that holds a copy.
  bool holdsOnly(std::size_t index) const;
  bool disable() const noexcept { return disable_; }
  bool lock() const noexcept { return lock_; }

 private:
  std::vector<std::unique_ptr<EffectItem>> items_;
  bool disable_ = false;
  bool lock_ = false;
};

}  // namespace Effect
