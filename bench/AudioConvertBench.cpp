// One second of 48 kHz stereo through the conversions at the edges of the program: the
// planar float buffer to interleaved PCM 16 (exports), interleaved PCM 16 into a block
// (every WAV and AVI read), and the block's 128 waveform columns (the cache's waveform
// loader, once a second of every file on the timeline). Making a block includes its two
// new channels, which glibc maps afresh each time: most of that case's time is theirs.
//
//   build/bin/sorvel_audio_convert_bench --benchmark_min_time=0.5
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

#include "BenchRun.h"
#include "media/audio/AudioBlockBuffer.h"
#include "media/audio/RawAudioBuffer.h"
#include "media/audio/WaveformBuffer.h"

namespace {

constexpr std::uint32_t kRate = 48000;

std::vector<std::int16_t> interleavedSine() {
  std::vector<std::int16_t> pcm(2 * kRate);
  for (std::uint32_t i = 0; i < kRate; ++i) {
    const double phase = 2 * std::numbers::pi * 440 * i / kRate;
    pcm[2 * i] = static_cast<std::int16_t>(std::lround(std::sin(phase) * 30000));
    pcm[2 * i + 1] = static_cast<std::int16_t>(std::lround(std::cos(phase) * 30000));
  }
  return pcm;
}

Media::AudioBlockBuffer block(const std::vector<std::int16_t>& pcm) {
  return Media::AudioBlockBuffer(
      Media::AudioSampleData{std::as_bytes(std::span(pcm)), Media::SampleFormat::Pcm, kRate, 16, 2});
}

void floatToPcm16(benchmark::State& state) {
  const Media::AudioBlockBuffer second = block(interleavedSine());
  Media::RawAudioBuffer raw;
  raw.sampleFormat = Media::SampleFormat::Pcm;
  raw.sampleBits = 16;
  raw.channels = 2;
  for (auto _ : state) {
    second.convertTo(raw);
    benchmark::DoNotOptimize(raw.bytes.data());
  }
  state.SetItemsProcessed(state.iterations() * kRate);
}

void pcm16ToFloat(benchmark::State& state) {
  const std::vector<std::int16_t> pcm = interleavedSine();
  for (auto _ : state) {
    Media::AudioBlockBuffer second = block(pcm);
    benchmark::DoNotOptimize(second.channelData(1));
  }
  state.SetItemsProcessed(state.iterations() * kRate);
}

void waveformBlock(benchmark::State& state) {
  const Media::AudioBlockBuffer second = block(interleavedSine());
  Media::WaveformBuffer waveform(Media::WaveformBuffer::kBytesPerBlock);
  for (auto _ : state) {
    waveform.writeBlock(0, second);
    benchmark::DoNotOptimize(waveform.data().data());
  }
  state.SetItemsProcessed(state.iterations() * kRate);
}

BENCHMARK(floatToPcm16)->Unit(benchmark::kMicrosecond);
BENCHMARK(pcm16ToFloat)->Unit(benchmark::kMicrosecond);
BENCHMARK(waveformBlock)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) { return Bench::runRegistered(argc, argv); }
