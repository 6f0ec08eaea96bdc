#include "media/DeviceGpu.h"

#include <cmath>
#include <cstring>

#include "media/CpuAccessBuffer.h"
#include "platform/egl_gl/GlBackendFactory.h"

namespace MediaTest {

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

Media::GraphicsDevice& gpu() {
  std::string why;
  return *gpuDevice(why);
}

void onGpu(const std::function<void()>& work) { gpu().run(work); }

std::vector<std::byte> toHalfPixels(const std::vector<float>& values) {
  const std::vector<_Float16> halves(values.begin(), values.end());
  const auto* bytes = reinterpret_cast<const std::byte*>(halves.data());
  return {bytes, bytes + halves.size() * sizeof(_Float16)};
}

std::vector<float> fromHalfPixels(const std::vector<std::byte>& bytes) {
  std::vector<_Float16> halves(bytes.size() / sizeof(_Float16));
  std::memcpy(halves.data(), bytes.data(), halves.size() * sizeof(_Float16));
  return {halves.begin(), halves.end()};
}

std::vector<std::byte> readBack(Media::ResourceBuffer& buffer) {
  Media::CpuAccessBuffer staging(gpu(), buffer.width(), buffer.height(), buffer.format());
  staging.copyResource(buffer.texture());
  return staging.takeData();
}

std::unique_ptr<Media::ResourceBuffer> upload(const Media::PassImage& image) {
  return std::make_unique<Media::ResourceBuffer>(gpu(), image.width, image.height, Media::Format::Rgba16Float,
                                                 toHalfPixels(image.pixels));
}

Media::PassImage readImage(Media::ResourceBuffer& buffer) {
  Media::PassImage image(buffer.width(), buffer.height());
  image.pixels = fromHalfPixels(readBack(buffer));
  return image;
}

Media::PassImage testImage(std::uint32_t width, std::uint32_t height, std::uint32_t seed) {
  constexpr float kAlphas[] = {0.0f, 1.0f / 255.0f, 1.0f, 0.5f, 0.25f};
  const auto half = [](float value) { return static_cast<float>(static_cast<_Float16>(value)); };
  Media::PassImage image(width, height);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const std::uint32_t i = y * width + x + seed;
      const float a = kAlphas[(i * 7 + seed) % 5];
      const auto spread = [&](std::uint32_t k, std::uint32_t m) {
        return half(a * static_cast<float>(i * k % m) / static_cast<float>(m - 1));
      };
      image.set(x, y, {spread(37, 101), spread(53, 97), spread(11, 89), half(a)});
    }
  }
  return image;
}

void expectImageNear(const std::vector<float>& actual, const Media::PassImage& expected, float absolute) {
  ASSERT_EQ(actual.size(), expected.pixels.size());
  int reported = 0;
  for (std::size_t i = 0; i < actual.size() && reported < 4; ++i) {
    const float want = expected.pixels[i];
    if (std::fabs(actual[i] - want) <= 2e-3f * std::fabs(want) + absolute) continue;
    ADD_FAILURE() << "pixel (" << (i / 4) % expected.width << ", " << (i / 4) / expected.width << ") component "
                  << i % 4 << ": " << actual[i] << ", expected " << want;
    ++reported;
  }
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
