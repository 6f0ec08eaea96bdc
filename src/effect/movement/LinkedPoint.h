// The coordinates that a distance-measuring movement works on. A linked group's members
// are used in the group's own order, so that X, Y and Z of one position measure the
// same distances, follow one curve and cannot drift apart; a member with another
// movement or other flags is stood in for by the item itself, and a lone item counts
// as (v, v, v), which gives the same shape.
#pragma once

#include <array>
#include <cstdint>

namespace Effect {

class EffectItemNumber;

class LinkedPoint {
 public:
  using Point = std::array<double, 3>;

  explicit LinkedPoint(const EffectItemNumber& item);

  // The point at value index `index`, each coordinate's index clamped into its item.
  // A group of two has 0 as its third coordinate.
  Point at(std::int32_t index) const;
  // Which coordinate is the item's own.
  std::size_t self() const noexcept { return self_; }

  static double distance(const Point& a, const Point& b);

 private:
  std::array<const EffectItemNumber*, 3> items_{};
  std::size_t self_ = 0;
};

}  // namespace Effect
