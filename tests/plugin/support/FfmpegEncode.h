// Compressed media made in the test with libavcodec's encoders, so that the readers'
// decoding is held against known pictures and sound without any stored file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace PluginTest {

// JPEG pictures of full-range YUV 4:2:2 whose luma is `luma(frame, x, y)` and chroma
// grey, one string a frame; quantiser 1 is the finest.
std::vector<std::string> encodeMjpeg(int width, int height, int frames,
                                     const std::function<std::uint8_t(int, int, int)>& luma, int quantiser = 1);

struct AdpcmStream {
  std::string data;  // whole blocks
  int blockAlign = 0;
  int samplesPerBlock = 0;
};

// Mono 16-bit `samples` as IMA ADPCM in the blocks a WAV file holds.
AdpcmStream encodeImaAdpcm(const std::vector<std::int16_t>& samples, int sampleRate);

}  // namespace PluginTest
