#include "effect/movement/InterpolationSpeed.h"

#include <algorithm>

#include "effect/item/EffectItemNumber.h"
#include "effect/movement/LinearSpeed.h"
#include "effect/movement/LinkedPoint.h"
#include "effect/movement/TimeControlCurve.h"

namespace Effect {

namespace {

// The points at value indices -1 to count, the two outer ones extrapolated, each with
// the distance to the next record (0 for the last).
struct Records {
  std::vector<LinkedPoint::Point> points;
  std::vector<double> lengths;

  explicit Records(const EffectItemNumber& item) {
    const LinkedPoint linked(item);
    for (std::int32_t index = -1; index <= item.valueCount(); ++index) points.push_back(linked.at(index));
    const std::int32_t last = static_cast<std::int32_t>(points.size()) - 1;
    const auto record = [&](std::int32_t i) { return points[std::clamp(i, 0, last)]; };
    for (std::size_t k = 0; k < 3; ++k) {
      points[0][k] = 5.0 / 3.0 * record(1)[k] - record(2)[k] + 1.0 / 3.0 * record(3)[k];
    }
    for (std::size_t k = 0; k < 3; ++k) {
      points[last][k] = 5.0 / 3.0 * record(last - 1)[k] - record(last - 2)[k] + 1.0 / 3.0 * record(last - 3)[k];
    }
    lengths.assign(points.size(), 0.0);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) lengths[i] = LinkedPoint::distance(points[i], points[i + 1]);
  }

  // The length of value segment i is that of record i + 1.
  std::vector<double> segmentLengths() const {
    if (lengths.size() < 4) return {};
    return std::vector<double>(lengths.begin() + 1, lengths.end() - 2);
  }

  std::size_t clamped(std::int32_t i) const { return static_cast<std::size_t>(std::clamp<std::int32_t>(i, 0, static_cast<std::int32_t>(points.size()) - 1)); }
};

}  // namespace

double InterpolationSpeed::getValue(const EffectItemNumber& item, const TimeInfo& time,
                                    const ItemContext& /*context*/) const {
  const Records records(item);
  const double t = TimeControlCurve::evaluate(item.timeControl(), time.position);
  const PathPosition at = PathPosition::locate(records.segmentLengths(), t);
  const std::int32_t s = at.segment;
  const double p = at.fraction;

  const std::size_t x = LinkedPoint(item).self();
  const double x0 = records.points[records.clamped(s)][x];
  const double x1 = records.points[records.clamped(s + 1)][x];
  const double x2 = records.points[records.clamped(s + 2)][x];
  const double x3 = records.points[records.clamped(s + 3)][x];
  const double l0 = records.lengths[records.clamped(s)];
  const double l1 = records.lengths[records.clamped(s + 1)];
  const double l2 = records.lengths[records.clamped(s + 2)];

  const double a = l1 / std::max(l1 + l0, 0.0001) / 3.0;
  const double b = l1 / std::max(l1 + l2, 0.0001) / 3.0;
  const double q = 1.0 - p;
  const double w = (3.0 * (2.0 * a) * p) * q * q + (3.0 * (1.0 - 2.0 * b) * q + p) * p * p;
  const double c1 = x1 + ((x2 - x1) * l0 + l1 * (x1 - x0)) / std::max(l1 + l0, 0.0001) / 3.0;
  const double c2 = x2 - ((x2 - x1) * l2 + l1 * (x3 - x2)) / std::max(l1 + l2, 0.0001) / 3.0;
  const double r = 1.0 - w;
  return (3.0 * c1 * w + x1 * r) * r * r + (3.0 * c2 * r + x2 * w) * w * w;
}

std::int32_t InterpolationSpeed::getSection(const EffectItemNumber& item, const TimeInfo& time) const {
  const Records records(item);
  return PathPosition::locate(records.segmentLengths(), TimeControlCurve::evaluate(item.timeControl(), time.position))
      .segment;
}

std::vector<double> InterpolationSpeed::getSectionPositions(const EffectItemNumber& item,
                                                            const Edit::Object& /*object*/) const {
  return PathPosition::pointShares(Records(item).segmentLengths());
}

}  // namespace Effect
