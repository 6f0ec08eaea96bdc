// What an undo record keeps of an object: one small state for each kind of change, so
// that a record never holds a copy of a whole object. The undo service pairs each with
// the shared object (Undo::UndoItemTemplate); restoring runs on the main thread inside
// the edit section of an undo or redo, whose scene is the one the object lives in.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace Effect {
class EffectBase;
}

namespace Edit {

class EditSection;
class Group;
class Object;

// Layer, frames and the positions of the section points. The points are held only when
// the object has any; a change of their number is the business of ObjectUndoSection.
struct ObjectUndoUpdate {
  std::int32_t layer = 0;
  std::int32_t start = 0;
  std::int32_t end = 0;
  std::vector<std::int32_t> sections;  // empty: not held

  void store(const Object& object);
  void restore(const std::shared_ptr<Object>& object, EditSection& section) const;
  bool equal(const ObjectUndoUpdate& other) const;
  // Keeps the points only when both sides hold the same number of them and some point
  // moved; otherwise layer and frames alone decide.
  static bool commit(ObjectUndoUpdate& before, ObjectUndoUpdate& after);
};

// Whether the object stands in the scene, and on which row.
struct ObjectUndoCreateDelete {
  std::int32_t layer = -1;  // -1: out of the scene

  void store(const Object& object);
  void restore(const std::shared_ptr<Object>& object, EditSection& section) const;
  bool equal(const ObjectUndoCreateDelete& other) const { return layer == other.layer; }
};

// The section points themselves.
struct ObjectUndoSection {
  std::vector<std::int32_t> sections;

  void store(const Object& object);
  void restore(const std::shared_ptr<Object>& object, EditSection& section) const;
  bool equal(const ObjectUndoSection& other) const { return sections == other.sections; }
};

// The group the object belongs to; the state keeps the group alive.
struct ObjectUndoGroup {
  std::shared_ptr<Group> group;

  void store(const Object& object);
  void restore(const std::shared_ptr<Object>& object, EditSection& section) const;
  bool equal(const ObjectUndoGroup& other) const { return group == other.group; }
};

// The chain: the same effect instances, so their values come back with them.
struct ObjectUndoEffect {
  std::vector<std::shared_ptr<Effect::EffectBase>> effects;

  void store(const Object& object);
  void restore(const std::shared_ptr<Object>& object, EditSection& section) const;
  bool equal(const ObjectUndoEffect& other) const { return effects == other.effects; }
};

struct ObjectUndoFlag {
  bool clipping = false;
  bool camera = true;

  void store(const Object& object);
  void restore(const std::shared_ptr<Object>& object, EditSection& section) const;
  bool equal(const ObjectUndoFlag& other) const { return clipping == other.clipping && camera == other.camera; }
};

// The layer range of the object's first effect (a control effect's 対象レイヤー数).
struct ObjectUndoLayerRange {
  std::int32_t range = -1;  // -1: the first effect has no layer range

  void store(const Object& object);
  void restore(const std::shared_ptr<Object>& object, EditSection& section) const;
  bool equal(const ObjectUndoLayerRange& other) const { return range == other.range; }
};

}  // namespace Edit
