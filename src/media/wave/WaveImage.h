// The picture of a sound that 音声波形表示 shows: bars of the waveform from the middle
// line, or of the spectrum from the bottom or mirrored about the middle, in cells of a
// chosen resolution with gaps between them. One draw of a pixel shader over a one-row
// texture of values; made once per device, used on the GPU thread.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace Media {

class AudioBuffer;
class ConstantBufferCommon;
class GraphicsDevice;
class PixelShader;
class ResourceBuffer;

enum class WaveStyle : std::int32_t {
  Wave = 0,            // a bar up for a positive sample, down for a negative one
  Spectrum = 1,        // bars up from the bottom
  MirrorSpectrum = 2,  // bars from the middle line both ways
};

struct WaveLook {
  std::array<float, 4> colour{1.0f, 1.0f, 1.0f, 1.0f};  // premultiplied
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  // Cells across and up; 0, or more than the image or the values hold, is one a pixel.
  std::int32_t columns = 0;
  std::int32_t rows = 0;
  // The part of a cell its bar fills, 0 to 1, across and up.
  float fillX = 1.0f;
  float fillY = 1.0f;
  // Multiplies each value: for a wave 1.0 fills half the height; for a spectrum the whole.
  float volume = 1.0f;
  WaveStyle style = WaveStyle::Wave;
};

// The sound as at most `limit` values of the mean of its channels: each value the
// sample of largest magnitude in its share of the span, so that peaks survive.
std::vector<float> waveformValues(const AudioBuffer& sound, std::size_t limit);

class WaveImage {
 public:
  explicit WaveImage(GraphicsDevice& device);
  ~WaveImage();
  WaveImage(const WaveImage&) = delete;
  WaveImage& operator=(const WaveImage&) = delete;

  GraphicsDevice& device() const noexcept { return *device_; }
  // A new image of look.width by look.height; empty for no size. GPU thread.
  std::unique_ptr<ResourceBuffer> draw(const std::vector<float>& values, const WaveLook& look);

 private:
  GraphicsDevice* device_;
  std::unique_ptr<PixelShader> shader_;
  std::unique_ptr<ConstantBufferCommon> constants_;
};

}  // namespace Media
