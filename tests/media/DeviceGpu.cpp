#include "media/DeviceGpu.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>

#include "platform/egl_gl/GlBackendFactory.h"

namespace MediaTest {

namespace {

std::uint16_t floatToHalf(float value) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, &value, 4);
  const std::uint32_t sign = (bits >> 16) & 0x8000u;
  const float magnitude = std::fabs(value);
  if (magnitude < 6.103515625e-05f) {  // subnormal halves: steps of 2^-24
    return static_cast<std::uint16_t>(sign | static_cast<std::uint32_t>(std::lrint(magnitude * 16777216.0f)));
  }
  int exponent = 0;
  const float mantissa = std::frexp(magnitude, &exponent);  // magnitude = mantissa * 2^exponent, mantissa in [.5, 1)
  std::uint32_t fraction = static_cast<std::uint32_t>(std::lrint((mantissa * 2.0f - 1.0f) * 1024.0f));
  std::uint32_t biased = static_cast<std::uint32_t>(exponent - 1 + 15);
  if (fraction == 1024) fraction = 0, ++biased;
  return static_cast<std::uint16_t>(sign | (biased << 10) | fraction);
}

float halfToFloat(std::uint16_t half) {
  const float sign = (half & 0x8000u) ? -1.0f : 1.0f;
  const int biased = (half >> 10) & 0x1F;
  const int fraction = half & 0x3FF;
  if (biased == 0) return sign * std::ldexp(static_cast<float>(fraction), -24);
  if (biased == 31) return fraction ? NAN : sign * INFINITY;
  return sign * std::ldexp(1.0f + fraction / 1024.0f, biased - 15);
}

}  // namespace

Media::GraphicsDevice* gpuDevice(std::string& why) {
  static std::string failure;
  static std::unique_ptr<Media::GraphicsDevice> device = [] {
    try {
      return std::make_unique<Media::GraphicsDevice>(
          Platform::createGlBackend, Media::DeviceSettings{Media::Format::Rgba16Float, Media::Format::A8Unorm, 16, {}});
    } catch (const std::exception& e) {
      failure = e.what();
      return std::unique_ptr<Media::GraphicsDevice>();
    }
  }();
  why = failure;
  return device.get();
}

void onGpu(const std::function<void()>& work) {
  std::string why;
  gpuDevice(why)->run(work);
}

std::vector<std::byte> toHalfPixels(const std::vector<float>& values) {
  std::vector<std::byte> bytes(values.size() * 2);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::uint16_t half = floatToHalf(values[i]);
    std::memcpy(&bytes[i * 2], &half, 2);
  }
  return bytes;
}

std::vector<float> fromHalfPixels(const std::vector<std::byte>& bytes) {
  std::vector<float> values(bytes.size() / 2);
  for (std::size_t i = 0; i < values.size(); ++i) {
    std::uint16_t half = 0;
    std::memcpy(&half, &bytes[i * 2], 2);
    values[i] = halfToFloat(half);
  }
  return values;
}

Media::CompiledShader framePixelShader(const std::string& body) {
  Media::CompiledShader shader;
  shader.stage = Media::ShaderStage::Pixel;
  shader.glsl =
      "#version 450 core\n"
      "layout(binding = 0) uniform sampler2D source0;\n"
      "layout(binding = 1) uniform sampler2D source1;\n"
      "layout(location = 0) out vec4 color;\n"
      "void main() {\n" +
      body + "\n}\n";
  shader.inputs = {{"SV_Position", 0, 15, Media::ComponentType::Float32}};
  shader.textures = {{0, -1, 0}, {1, -1, 1}};
  return shader;
}

}  // namespace MediaTest
