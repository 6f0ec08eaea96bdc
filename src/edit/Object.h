// One object of the timeline: a span of frames on a row with its chain of effects.
// Always held by shared_ptr; rows, groups, selections, undo records and render tasks
// share the same pointer. Written on the main thread inside an edit section, read by
// render workers inside a scene reader.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace Effect {
class EffectBase;
}  // namespace Effect

namespace Edit {

class Group;
class Object;

// Asks the first effect of a control object how many layers below it the object
// governs (0: all). The effect system installs it; until then every control object
// governs all layers.
using ControlRangeReader = std::function<std::int32_t(const Object& object)>;

class Object {
 public:
  Object();
  ~Object();
  // A copy would share the id, which must stay unique; copies of objects are made
  // field by field by the commands that need them, each with a new id.
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  // Ids start at 1, so 0 can stand for "no object" wherever an id is passed around.
  std::uint64_t id() const noexcept { return id_; }

  // Sections: n points divide the object into n + 1 sections. `index` is 0 to n + 1;
  // 0 is `start`, point i is `start + sections[i - 1]`, and n + 1 is `end + 1`.
  std::int32_t sectionCount() const noexcept { return static_cast<std::int32_t>(sections.size()) + 1; }
  std::int32_t sectionBegin(std::int32_t index) const noexcept;
  // The section that holds `frame`: the number of points at or before it, 0 for any
  // frame of the first section (and for frames before the object).
  std::int32_t sectionIndex(std::int32_t frame) const noexcept;
  // A difference of frames, not a count: the last section counts to `end`, so a
  // one-frame object has a section of length 0. 0 for an index outside 0..n.
  std::int32_t sectionLength(std::int32_t index) const noexcept;
  // Whether a point could be added at `frame` or, moved on, in a later section.
  bool canAddSection(std::int32_t frame) const noexcept;
  // Whether a point could stand exactly at `frame`: strictly inside its section. The
  // project reader holds its points to the same test.
  bool canAddSectionExact(std::int32_t frame) const noexcept;

  // The layer range of a control object, as the installed reader reports it.
  std::int32_t controlRange() const;
  static void setControlRangeReader(ControlRangeReader reader);

  // A layer-range control object (group, camera, audio group or time control).
  bool control = false;
  std::vector<std::shared_ptr<Effect::EffectBase>> effects;
  // Kept by Group::join and Group::leave together with the group's own set.
  std::shared_ptr<Group> group;
  std::int32_t start = 0;  // first frame, inclusive
  std::int32_t end = 0;    // last frame, inclusive
  // Offsets from `start`, strictly ascending, each at least 1 and below `end - start`.
  std::vector<std::int32_t> sections;
  std::int32_t layer = 0;  // -1: removed from its scene, waiting for the row's compaction
  bool clipping = false;
  bool camera = true;
  bool selected = false;

 private:
  std::uint64_t id_;
};

}  // namespace Edit
