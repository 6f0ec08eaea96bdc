// Compressed media made in the test with libavcodec's encoders, so that the readers'
// decoding is held against known pictures and sound without any stored file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace PluginTest {

struct EncodedChunk {
  std::string data;
  bool key = false;
};

// Whether this build of libavcodec has the encoder `name`.
bool hasEncoder(const char* name);

// Pictures of `encoder` (libavcodec's name) whose luma is `luma(frame, x, y)` and chroma
// grey, in the order the encoder hands them out; "mjpeg" takes full-range YUV 4:2:2,
// the others YUV 4:2:0. `quantiser` 1 is the finest; `bFrames` allows reordering.
std::vector<EncodedChunk> encodeVideo(const char* encoder, int width, int height, int frames,
                                      const std::function<std::uint8_t(int, int, int)>& luma, int quantiser = 1,
                                      int bFrames = 0);

struct EncodedSound {
  std::string data;
  int blockAlign = 0;
  int samplesPerBlock = 0;
  int bitRate = 0;
};

// Mono `samples` (1.0 full scale) as `encoder` writes them, packets joined.
EncodedSound encodeSound(const char* encoder, const std::vector<double>& samples, int sampleRate);

}  // namespace PluginTest
