#include "support/SoundMatch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace PluginTest {

SoundMatch matchSound(const float* decoded, std::size_t count, std::size_t from, const std::vector<double>& source,
                      std::size_t start, int maxShift) {
  SoundMatch best{0, std::numeric_limits<double>::infinity()};
  for (int shift = -maxShift; shift <= maxShift; ++shift) {
    double worst = 0;
    for (std::size_t i = from; i < count; ++i) {
      const auto at = static_cast<std::ptrdiff_t>(start + i) - shift;
      const double expected = at >= 0 && static_cast<std::size_t>(at) < source.size() ? source[static_cast<std::size_t>(at)] : 0.0;
      worst = std::max(worst, std::abs(decoded[i] - expected));
    }
    if (worst < best.worst) best = {shift, worst};
  }
  return best;
}

}  // namespace PluginTest
