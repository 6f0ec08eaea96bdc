#include "effect/movement/InterpolationMove.h"

#include <algorithm>

#include "edit/Object.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/LinkedPoint.h"

namespace Effect {

namespace {

// (5/3) a - b + (1/3) c per coordinate: a point beyond the ends of the values.
LinkedPoint::Point extrapolate(const LinkedPoint::Point& a, const LinkedPoint::Point& b,
                               const LinkedPoint::Point& c) {
  LinkedPoint::Point point{};
  for (std::size_t k = 0; k < point.size(); ++k) point[k] = 5.0 / 3.0 * a[k] - b[k] + 1.0 / 3.0 * c[k];
  return point;
}

}  // namespace

double InterpolationMove::getValue(const EffectItemNumber& item, const TimeInfo& time,
                                   const ItemContext& context) const {
  const LinkedPoint points(item);
  const std::int32_t s = time.section;
  const LinkedPoint::Point p0 = points.at(s);
  const LinkedPoint::Point p1 = points.at(s + 1);
  LinkedPoint::Point pm = points.at(s - 1);
  LinkedPoint::Point p2 = points.at(s + 2);
  // Without easing the ends continue the curve; with it the end point is doubled,
  // which gives the curve zero speed there.
  const bool last = s >= time.sectionCount - 1;
  if (s == 0 && !item.hasFlag(EffectItemNumber::Acceleration)) pm = extrapolate(p0, p1, p2);
  if (last && !item.hasFlag(EffectItemNumber::Deceleration)) p2 = extrapolate(p1, p0, pm);

  const double d0 = LinkedPoint::distance(pm, p0);
  const double d1 = LinkedPoint::distance(p0, p1);
  const double d2 = LinkedPoint::distance(p1, p2);

  const double len = time.length;
  double before = len;
  double after = len;
  if (context.object && time.sectionCount > 1) {
    if (s > 0) before = TimeInfo::sectionLength(*context.object, s - 1);
    if (!last) after = TimeInfo::sectionLength(*context.object, s + 1);
  }
  const double p = time.offset / time.length;
  const double q = 1.0 - p;
  const double a = 0.75 * len / std::max(before + len, 1.0);
  const double b = 1.0 - 0.75 * len / std::max(after + len, 1.0);
  const double w = (3.0 * a * p + 0.0 * q) * q * q + (3.0 * b * q + p) * p * p;

  const std::size_t x = points.self();
  const double t0 = (d0 * (p1[x] - p0[x]) + d1 * (p0[x] - pm[x])) / std::max(d0 + d1, 0.0001);
  const double t1 = (d1 * (p2[x] - p1[x]) + d2 * (p1[x] - p0[x])) / std::max(d1 + d2, 0.0001);
  const double r = 1.0 - w;
  const double c1 = p0[x] + t0 / 3.0;
  const double c2 = p1[x] - t1 / 3.0;
  return (3.0 * c1 * w + r * p0[x]) * r * r + (3.0 * c2 * r + p1[x] * w) * w * w;
}

}  // namespace Effect
