// How closely decoded sound follows the sound it was made from, allowing the few
// samples of drift that a jump counted in bytes may bring.
#pragma once

#include <cstddef>
#include <vector>

namespace PluginTest {

struct SoundMatch {
  int shift = 0;       // samples the decoded sound lies late (negative: early)
  double worst = 0.0;  // largest difference at that shift
};

// Compares decoded[from .. count - 1] with source[start + from + shift ...] for every
// shift within maxShift and gives the closest.
SoundMatch matchSound(const float* decoded, std::size_t count, std::size_t from, const std::vector<double>& source,
                      std::size_t start, int maxShift);

}  // namespace PluginTest
