#include "support/SoundMatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "media/audio/AudioBlockBuffer.h"
#include "plugin/InputFile.h"

namespace PluginTest {

namespace {

// The largest difference of decoded[from ..] from source[start + from - shift ..] at the
// shift within maxShift where it is least.
double closestFit(const float* decoded, std::size_t count, std::size_t from, const std::vector<double>& source,
                  std::size_t start, int maxShift) {
  double best = std::numeric_limits<double>::infinity();
  for (int shift = -maxShift; shift <= maxShift; ++shift) {
    double worst = 0;
    for (std::size_t i = from; i < count; ++i) {
      const auto at = static_cast<std::ptrdiff_t>(start + i) - shift;
      const double expected =
          at >= 0 && static_cast<std::size_t>(at) < source.size() ? source[static_cast<std::size_t>(at)] : 0.0;
      worst = std::max(worst, std::abs(decoded[i] - expected));
    }
    best = std::min(best, worst);
  }
  return best;
}

}  // namespace

std::vector<double> sine(double frequency, int rate, int seconds) {
  std::vector<double> samples(static_cast<std::size_t>(rate) * static_cast<std::size_t>(seconds));
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i] = 0.5 * std::sin(2 * M_PI * frequency * static_cast<double>(i) / rate);
  }
  return samples;
}

void expectBlocksFollow(Plugin::InputFile& file, const std::vector<double>& source,
                        std::initializer_list<std::pair<int, int>> reads) {
  for (const auto& [block, drift] : reads) {
    const auto read = file.readAudio(block);
    ASSERT_EQ(read->sampleCount(), file.sampleRate);
    const std::size_t start = static_cast<std::size_t>(block) * file.sampleRate;
    EXPECT_LT(closestFit(read->channelData(0), file.sampleRate, block == 0 ? 64 : 0, source, start, drift), 0.04)
        << "block " << block;
  }
}

}  // namespace PluginTest
