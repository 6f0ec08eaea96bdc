// Makes objects with their chains of effects: a new object from a define, and copies
// of objects for the clipboard, duplicates and splits. Main thread, inside an edit
// section; the effect registry must outlive the factory.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace Effect {
class EffectDefine;
class EffectService;
}  // namespace Effect

namespace Edit {

class LayerObjectManager;
class Object;

class ObjectFactory {
 public:
  explicit ObjectFactory(Effect::EffectService& effects) : effects_(effects) {}

  // A new object on the row with the define's effect (and what the chain rules add to
  // it), which takes the define's stored default values. What the chain rules throw
  // passes on, with the object taken off the row again.
  std::shared_ptr<Object> createObject(LayerObjectManager& rows, Effect::EffectDefine& define, std::int32_t layer,
                                       std::int32_t start, std::int32_t end) const;

  // A copy that stands on no row (its `layer` still names the source's): a new id, the
  // source's flags, layer, frames, section points and effects, and the source's group
  // pointer without membership, so that a paste can tell which copies belonged
  // together.
  std::shared_ptr<Object> copyObject(const Object& source) const;
  std::vector<std::shared_ptr<Object>> copyObjects(const std::vector<std::shared_ptr<Object>>& sources) const;

  // Gives `target` the source's clipping and camera flags, section points and fresh
  // copies of its effects; frames, layer and group are the caller's.
  void copyContent(const Object& source, Object& target) const;

 private:
  Effect::EffectService& effects_;
};

}  // namespace Edit
