// What an undo record keeps of a row. The target is the row's info, which outlives the
// row itself, so a deleted row comes back with its name and switches. The undo service
// pairs each state with the info (Undo::UndoItemTemplate); restoring runs on the main
// thread inside the edit section of an undo or redo, on that section's scene.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace Edit {

class EditSection;
class LayerObjectManager;
struct LayerInfo;

// The row's own settings.
struct LayerUndoUpdate {
  bool hide = false;
  bool lock = false;
  std::wstring name;

  void store(const LayerInfo& info);
  void restore(const std::shared_ptr<LayerInfo>& info, EditSection& section) const;
  bool equal(const LayerUndoUpdate& other) const {
    return hide == other.hide && lock == other.lock && name == other.name;
  }
};

// Where the row stands; its objects travel with it.
struct LayerUndoMove {
  std::int32_t index = 0;

  void store(const LayerInfo& info);
  void restore(const std::shared_ptr<LayerInfo>& info, EditSection& section) const;
  bool equal(const LayerUndoMove& other) const { return index == other.index; }
};

// Whether the row exists. A deleted row's info still names a row index, so only the
// rows can tell: the state keeps the scene's rows to ask them.
struct LayerUndoCreateDelete {
  explicit LayerUndoCreateDelete(std::weak_ptr<const LayerObjectManager> rows) : rows(std::move(rows)) {}

  std::weak_ptr<const LayerObjectManager> rows;
  std::int32_t index = -1;  // -1: the row does not exist

  void store(const LayerInfo& info);
  void restore(const std::shared_ptr<LayerInfo>& info, EditSection& section) const;
  bool equal(const LayerUndoCreateDelete& other) const { return index == other.index; }
};

}  // namespace Edit
