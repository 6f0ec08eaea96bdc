// The section points of an object together with the key values that hang on them:
// adding and deleting a point, splitting an object in two, and the values its numeric
// items show at a frame. Used by the edit commands on the main thread inside an edit
// section; the positions alone are Object's own arithmetic.
#pragma once

#include <cstdint>
#include <unordered_map>

namespace Effect {
class EffectItemNumber;
class EffectService;
}  // namespace Effect

namespace Edit {

class LayerObjectManager;
class Object;

class ObjectSections {
 public:
  // The value each numeric item of an object shows at a frame, keyed by the item.
  using KeyValues = std::unordered_map<const Effect::EffectItemNumber*, double>;

  // Every numeric item of every effect, evaluated through its movement at `frame`.
  static KeyValues keyValuesAt(const Object& object, std::int32_t frame);

  // Adds a point at `frame`, or where the nearest section at or after it that is long
  // enough can take one; with none, nothing happens. Each numeric item gets a key for
  // the point: its value from `values`, or its default when the item is not there.
  static void addSection(Object& object, std::int32_t frame, const KeyValues& values);
  // Removes point `index` (1 to n) and its key from every numeric item; any other
  // index is ignored.
  static void deleteSection(Object& object, std::int32_t index);

  // Makes `left` the part of the object before `frame` and `right` the part from it on,
  // each with copies of the effects, keeping at the cut the values the object showed
  // there. Both are usually fresh empty objects on the object's row; the object itself
  // is not changed. False, and nothing done, unless start < frame <= end.
  static bool split(const Object& object, std::int32_t frame, Object& left, Object& right, LayerObjectManager& scene,
                    Effect::EffectService& effects);
};

}  // namespace Edit
