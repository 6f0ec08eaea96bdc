// A sample count worked out in floating point from a header's lengths and rates, kept
// to what a 64-bit count holds: a damaged header may make it any number, or none.
#pragma once

#include <cstdint>

namespace Plugin {

// `samples` cut to a whole count, 0 for nothing or less, at most 9 * 10^18.
inline std::int64_t sampleCountOf(double samples) noexcept {
  constexpr double kLargest = 9.0e18;  // below 2^63, so the conversion is defined
  if (!(samples > 0)) return 0;
  return static_cast<std::int64_t>(samples < kLargest ? samples : kLargest);
}

}  // namespace Plugin
