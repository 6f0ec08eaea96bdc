// Where a frame lies in an object: its section, the offset into it and the fraction of
// the whole object. Computed once per object and frame and handed to every movement.
#pragma once

#include <cstdint>

namespace Edit {
class Object;
}

namespace Effect {

struct TimeInfo {
  std::int32_t section = 0;
  std::int32_t sectionCount = 1;
  double offset = 0.0;      // frames from the start of the section; fractional between frames
  std::int32_t length = 1;  // frames in the section, at least 1
  double position = 0.0;    // fraction of the whole object

  // `frame` picks the section; `exactFrame` may lie between frames.
  static TimeInfo ofSections(const Edit::Object& object, std::int32_t frame, double exactFrame);
  // The object as one section, section points ignored (the two-point flag).
  static TimeInfo ofWhole(const Edit::Object& object, double exactFrame);

  // Frames in section `section` of the object, at least 1.
  static std::int32_t sectionLength(const Edit::Object& object, std::int32_t section);

  // The section index plus the fraction of it that has passed.
  double sectionPosition() const noexcept { return section + offset / length; }
};

}  // namespace Effect
