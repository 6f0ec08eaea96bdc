// AudioBuffer's frequency analyses, spectrum and fourier: a 2048-point FFT over frames of
// each channel, and the band scale the waveform effect and obj.getaudio draw from.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

#include "media/audio/AudioBuffer.h"
#include "media/audio/RawAudioBuffer.h"

namespace Media {

namespace {

constexpr std::size_t kFrame = 2048;
constexpr std::size_t kBins = kFrame / 2;  // bins past the half mirror these for real input
constexpr std::size_t kBands = 512;
constexpr std::uint32_t kMostBands = 1024;
constexpr std::size_t kFrameBits = 11;
static_assert(std::size_t{1} << kFrameBits == kFrame);

// Magnitudes are scaled into the 0 .. 32767 of 16-bit values. A sine at a bin's
// frequency has magnitude 1024 × its amplitude, so one of about 0.67 fills the range.
constexpr float kScale = 48.0f;
constexpr float kTop = 32767.0f;
// Taken off a band's level, so the rounding noise of a silent band stays at zero.
constexpr float kFloor = 64.0f;

struct FftTables {
  std::array<float, kBins> cos;
  std::array<float, kBins> sin;
  std::array<std::uint16_t, kFrame> reversed;  // bit-reversed sample order
};

const FftTables& fftTables() {
  static const FftTables tables = [] {
    FftTables t{};
    for (std::size_t k = 0; k < kBins; ++k) {
      const double angle = static_cast<double>(k) * (2.0 * std::numbers::pi / kFrame);
      t.cos[k] = static_cast<float>(std::cos(angle));
      t.sin[k] = static_cast<float>(std::sin(angle));
    }
    for (std::size_t n = 0; n < kFrame; ++n) {
      std::size_t r = 0;
      for (std::size_t bit = 0; bit < kFrameBits; ++bit) r |= ((n >> bit) & 1) << (kFrameBits - 1 - bit);
      t.reversed[n] = static_cast<std::uint16_t>(r);
    }
    return t;
  }();
  return tables;
}

struct Frame {
  std::array<float, kFrame> re;
  std::array<float, kFrame> im;
};

// Transforms the frame of `count` samples' signal that begins at `start`; `sample(i)` reads
// sample i. A frame that runs past the end goes on from the first sample, so a short
// buffer is seen as repeating rather than followed by silence.
template <typename Sample>
void transform(Sample sample, std::size_t count, std::size_t start, Frame& frame) {
  const FftTables& tables = fftTables();
  for (std::size_t n = 0; n < kFrame; ++n) {
    frame.re[tables.reversed[n]] = sample((start + n) % count);
    frame.im[n] = 0.0f;
  }
  // Decimation in time: butterflies of 2, 4, ... 2048. A butterfly of size 2 × half uses
  // every (1024 / half)th twiddle, the angle being the twiddle's index × 2π / 2048.
  for (std::size_t half = 1; half < kFrame; half *= 2) {
    const std::size_t step = kBins / half;
    for (std::size_t group = 0; group < kFrame; group += 2 * half) {
      for (std::size_t k = 0; k < half; ++k) {
        const float wr = tables.cos[k * step];
        const float wi = -tables.sin[k * step];
        const std::size_t top = group + k;
        const std::size_t bottom = top + half;
        const float tr = frame.re[bottom] * wr - frame.im[bottom] * wi;
        const float ti = frame.re[bottom] * wi + frame.im[bottom] * wr;
        frame.re[bottom] = frame.re[top] - tr;
        frame.im[bottom] = frame.im[top] - ti;
        frame.re[top] += tr;
        frame.im[top] += ti;
      }
    }
  }
}

// Edges of the 512 bands, in bins: e(0) = 2 and e(k) = 2 × g^k + 256 × (k / 512)^9 with
// g = 384^(1/512). The first term spaces the bands evenly in pitch from bin 2 to bin 768;
// the second, negligible below the middle, spreads the top bands to reach bin 1024.
const std::array<double, kBands + 1>& bandEdges() {
  static const std::array<double, kBands + 1> edges = [] {
    std::array<double, kBands + 1> e{};
    const double g = std::pow(384.0, 1.0 / kBands);
    e[0] = 2.0;
    for (std::size_t k = 1; k <= kBands; ++k) {
      e[k] = 2.0 * std::pow(g, static_cast<double>(k)) + 256.0 * std::pow(static_cast<double>(k) / kBands, 9.0);
    }
    return e;
  }();
  return edges;
}

// Power over [a, b) in bins, bin n covering [n, n + 1). A band narrower than a bin takes
// the power interpolated at a, times its width, so the low bands are not all zero or all
// one bin. `power` has an entry past bin 1023 for the top edge to land on.
double bandPower(const std::array<float, kBins + 1>& power, double a, double b) {
  const auto t = static_cast<std::size_t>(a);
  const double f = static_cast<double>(t) + 1.0 - a;
  if (b - a < 1.0) return (f * power[t] + (1.0 - f) * power[t + 1]) * (b - a);
  double sum = 0.0;
  std::size_t n = t;
  if (static_cast<double>(t) != a) sum += f * power[n++];
  const auto end = static_cast<std::size_t>(b);
  for (; n < end; ++n) sum += power[n];
  return sum + (b - static_cast<double>(end)) * power[end];
}

// Folds one frame into the bands by peak.
void addFrame(const Frame& frame, std::array<float, kBands>& bands) {
  std::array<float, kBins + 1> power{};
  for (std::size_t i = 0; i < kBins; ++i) power[i] = frame.re[i] * frame.re[i] + frame.im[i] * frame.im[i];
  // A bin lower than both neighbours is raised to the lower of them: the low bands are
  // narrower than a bin and interpolate between bins, so a lone low bin would cut a
  // notch several bands wide. Only bins 1 .. 510; from there up a band spans several
  // bins and sums a dip in with them.
  float before = power[0];
  for (std::size_t i = 1; i <= 510; ++i) {
    const float here = power[i];
    power[i] = std::max(here, std::min(before, power[i + 1]));
    before = here;
  }
  const auto& edges = bandEdges();
  for (std::size_t k = 0; k < kBands; ++k) {
    const float level = static_cast<float>(std::sqrt(bandPower(power, edges[k], edges[k + 1]))) * kScale - kFloor;
    bands[k] = std::max(bands[k], std::clamp(level, 0.0f, kTop));
  }
}

// out[i] is the mean of in[i − radius .. i + radius] within range, in[j] weighing
// weights[|i − j|]; at the ends the weights left are renormalised.
void smooth(const float* in, float* out, std::size_t count, std::size_t radius, const float* weights) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t first = i > radius ? i - radius : 0;
    const std::size_t last = std::min(i + radius, count - 1);
    double sum = 0.0;
    double total = 0.0;
    for (std::size_t j = first; j <= last; ++j) {
      const float w = weights[j > i ? j - i : i - j];
      sum += double{w} * in[j];
      total += w;
    }
    out[i] = static_cast<float>(sum / total);
  }
}

}  // namespace

std::vector<float> AudioBuffer::spectrum(std::uint32_t bandCount) const {
  const std::size_t count = std::min(bandCount, kMostBands);
  std::vector<float> out(count, 0.0f);
  if (count == 0) return out;

  std::array<float, kBands> bands{};
  Frame frame;
  // A mono buffer's second channel is its first: the same frames, the same peaks.
  const std::uint32_t channelCount = channelData(1) == channelData(0) ? 1 : 2;
  for (std::uint32_t c = 0; c < channelCount; ++c) {
    const float* samples = channelData(c);
    for (std::size_t start = 0; start < sampleCount_; start += kFrame) {
      transform([samples](std::size_t i) { return samples[i]; }, sampleCount_, start, frame);
      addFrame(frame, bands);
    }
  }

  // The extra entry is the zero the upward interpolation reaches past the last band.
  std::array<float, kBands + 1> smoothed{};
  constexpr float kBandWeights[] = {512.0f, 256.0f};
  smooth(bands.data(), smoothed.data(), kBands, 1, kBandWeights);

  std::vector<float> resampled(count, 0.0f);
  if (count <= kBands) {
    // Each band goes to the nearest target by peak. The top bands round to `count`, one
    // past the last target, and are left out.
    for (std::size_t i = 0; i < kBands; ++i) {
      const std::size_t target = (kBands / 2 + count * i) / kBands;
      if (target < count) resampled[target] = std::max(resampled[target], smoothed[i]);
    }
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      const double x = static_cast<double>(i) * kBands / static_cast<double>(count);
      const auto below = static_cast<std::size_t>(x);
      const double f = static_cast<double>(below) + 1.0 - x;
      resampled[i] = static_cast<float>(f * smoothed[below] + (1.0 - f) * smoothed[below + 1]);
    }
  }

  // The more bands, the wider the final smoothing, so the picture keeps its look
  // whatever the width it is drawn at.
  const std::size_t w = 2 * count;
  if (w >= 256) {
    const std::size_t radius = w / 256;
    std::vector<float> weights(radius + 1);
    for (std::size_t d = 0; d <= radius; ++d) weights[d] = static_cast<float>((radius + 1 - d) * 256);
    smooth(resampled.data(), out.data(), count, radius, weights.data());
  } else if (w >= 32) {
    const float weights[] = {512.0f, static_cast<float>(w)};
    smooth(resampled.data(), out.data(), count, 1, weights);
  } else {
    out = std::move(resampled);
  }
  return out;
}

std::vector<float> AudioBuffer::fourier() const {
  std::vector<float> out(kBins, 0.0f);
  if (sampleCount_ == 0) return out;
  RawAudioBuffer mono;
  mono.sampleFormat = SampleFormat::Float;
  mono.sampleBits = 32;
  mono.channels = 1;
  convertTo(mono);
  const std::uint8_t* bytes = mono.bytes.data();
  // Every frame's result overwrites the one before, so only the last frame is worked.
  const std::size_t last = (sampleCount_ - 1) / kFrame * kFrame;
  Frame frame;
  transform(
      [bytes](std::size_t i) {
        float value;
        std::memcpy(&value, bytes + i * sizeof(float), sizeof(float));
        return value;
      },
      sampleCount_, last, frame);
  for (std::size_t i = 0; i < kBins; ++i) {
    const float magnitude = std::sqrt(frame.re[i] * frame.re[i] + frame.im[i] * frame.im[i]) * kScale;
    out[i] = std::clamp(magnitude, 0.0f, kTop);
  }
  return out;
}

}  // namespace Media
