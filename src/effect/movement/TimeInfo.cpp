#include "effect/movement/TimeInfo.h"

#include <algorithm>

#include "edit/Object.h"

namespace Effect {

namespace {
// A difference of frames, not a count: an object of one frame has length 1, offset 0.
std::int32_t atLeastOne(std::int32_t length) { return length < 2 ? 1 : length; }
}  // namespace

TimeInfo TimeInfo::ofSections(const Edit::Object& object, std::int32_t frame, double exactFrame) {
  const std::vector<std::int32_t>& points = object.sections;
  TimeInfo time;
  time.sectionCount = static_cast<std::int32_t>(points.size()) + 1;
  time.section = static_cast<std::int32_t>(std::upper_bound(points.begin(), points.end(), frame - object.start) -
                                           points.begin());
  const std::int32_t sectionStart = time.section == 0 ? object.start : object.start + points[time.section - 1];
  time.offset = exactFrame - sectionStart;
  time.length = sectionLength(object, time.section);
  time.position = (exactFrame - object.start) / std::max(object.end - object.start, 1);
  return time;
}

std::int32_t TimeInfo::sectionLength(const Edit::Object& object, std::int32_t section) {
  const std::vector<std::int32_t>& points = object.sections;
  const auto last = static_cast<std::int32_t>(points.size());
  if (points.empty()) return atLeastOne(object.end - object.start);
  if (section <= 0) return atLeastOne(points.front());
  if (section >= last) return atLeastOne(object.end - points.back() - object.start);
  return atLeastOne(points[section] - points[section - 1]);
}

TimeInfo TimeInfo::ofWhole(const Edit::Object& object, double exactFrame) {
  TimeInfo time;
  time.offset = exactFrame - object.start;
  time.length = std::max(object.end - object.start, 1);
  time.position = time.offset / time.length;
  return time;
}

}  // namespace Effect
