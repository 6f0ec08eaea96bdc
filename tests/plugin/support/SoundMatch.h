// Decoded sound held against the sound it was made from, allowing the few samples of
// drift that a jump counted in bytes may bring.
#pragma once

#include <utility>
#include <vector>

namespace Plugin {
class InputFile;
}

namespace PluginTest {

// A half-scale sine of `frequency` Hz, `seconds` long at `rate`.
std::vector<double> sine(double frequency, int rate, int seconds);

// Reads `file`'s blocks in the order given (block, samples of drift allowed) and expects
// each to lie on `source` within 4 % of full scale at some drift within the one allowed.
// ADPCM starts at its smallest step, so the first 64 samples of the stream are left out.
void expectBlocksFollow(Plugin::InputFile& file, const std::vector<double>& source,
                        std::initializer_list<std::pair<int, int>> reads);

}  // namespace PluginTest
