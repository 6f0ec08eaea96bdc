#include "effect/movement/LinearSpeed.h"

#include <numeric>

#include "effect/item/EffectItemNumber.h"
#include "effect/movement/LinearMove.h"
#include "effect/movement/LinkedPoint.h"
#include "effect/movement/TimeControlCurve.h"

namespace Effect {

PathPosition PathPosition::locate(const std::vector<double>& lengths, double t) {
  PathPosition found;
  if (lengths.size() < 2) {
    found.fraction = t;
    return found;
  }
  double distance = t * std::accumulate(lengths.begin(), lengths.end(), 0.0);
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    if (lengths[i] >= distance) {
      found.segment = static_cast<std::int32_t>(i);
      found.fraction = lengths[i] == 0.0 ? 0.0 : distance / lengths[i];
      return found;
    }
    distance -= lengths[i];
  }
  found.segment = static_cast<std::int32_t>(lengths.size()) - 1;
  found.fraction = lengths.back() == 0.0 ? 1.0 : distance / lengths.back() + 1.0;
  return found;
}

std::vector<double> PathPosition::pointShares(const std::vector<double>& lengths) {
  const double sum = std::accumulate(lengths.begin(), lengths.end(), 0.0);
  // Fewer than 3 values means fewer than 2 segments, with no inner point.
  if (lengths.size() < 2 || sum == 0.0) return {};
  std::vector<double> shares;
  double running = 0.0;
  for (std::size_t i = 0; i + 1 < lengths.size(); ++i) {
    running += lengths[i];
    shares.push_back(running / sum);
  }
  return shares;
}

std::vector<double> LinearSpeed::segmentLengths(const EffectItemNumber& item) const {
  const LinkedPoint points(item);
  std::vector<double> lengths;
  for (std::int32_t i = 0; i + 1 < item.valueCount(); ++i) {
    lengths.push_back(LinkedPoint::distance(points.at(i), points.at(i + 1)));
  }
  if (!lengths.empty() && item.hasFlag(EffectItemNumber::Acceleration)) lengths.front() *= 2.0;
  if (!lengths.empty() && item.hasFlag(EffectItemNumber::Deceleration)) lengths.back() *= 2.0;
  return lengths;
}

double LinearSpeed::getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& /*context*/) const {
  const double t = TimeControlCurve::evaluate(item.timeControl(), time.position);
  const PathPosition at = PathPosition::locate(segmentLengths(item), t);
  const bool accelerate = at.segment == 0 && item.hasFlag(EffectItemNumber::Acceleration);
  const bool decelerate = at.segment == time.sectionCount - 1 && item.hasFlag(EffectItemNumber::Deceleration);
  return LinearMove::ease(item.getValue(at.segment), item.getValue(at.segment + 1), at.fraction, accelerate,
                          decelerate);
}

std::int32_t LinearSpeed::getSection(const EffectItemNumber& item, const TimeInfo& time) const {
  return PathPosition::locate(segmentLengths(item), TimeControlCurve::evaluate(item.timeControl(), time.position))
      .segment;
}

std::vector<double> LinearSpeed::getSectionPositions(const EffectItemNumber& item,
                                                     const Edit::Object& /*object*/) const {
  return PathPosition::pointShares(segmentLengths(item));
}

}  // namespace Effect
