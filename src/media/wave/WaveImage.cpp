#include "media/wave/WaveImage.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "media/CompiledShader.h"
#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/PixelShader.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"

namespace Media {

namespace {

struct Block {
  float colour[4];
  float size[2];
  float cells[2];
  float fill[2];
  float volume;
  std::int32_t style;
};
static_assert(sizeof(Block) == 48);

// A pixel lies in a cell of the grid; it is lit when it lies in the bar's part of the
// cell across, and, up the bar from its base, in a cell whose middle the value reaches
// and in the bar's part of that cell. With one cell a pixel, that is: up to the value.
constexpr const char* kShader = R"(#version 450
layout(binding = 0) uniform sampler2D source0;
layout(std140, binding = 0) uniform WaveConstants {
  vec4 colour; vec2 size; vec2 cells; vec2 fill; float volume; int style;
} c;
layout(location = 0) out vec4 target0;
void main() {
  vec2 p = gl_FragCoord.xy;
  float across = p.x / c.size.x * c.cells.x;
  float column = floor(across);
  target0 = vec4(0.0);
  if (abs(across - column - 0.5) * 2.0 > c.fill.x) return;
  int count = textureSize(source0, 0).x;
  int index = min(count - 1, int((column + 0.5) * float(count) / c.cells.x));
  float value = texelFetch(source0, ivec2(index, 0), 0).r * c.volume;
  float up;
  if (c.style == 0) {
    up = (c.size.y * 0.5 - p.y) / (c.size.y * 0.5);
    if (value < 0.0) up = -up;
    value = abs(value);
  } else if (c.style == 1) {
    up = (c.size.y - p.y) / c.size.y;
  } else {
    up = abs(c.size.y * 0.5 - p.y) / (c.size.y * 0.5);
  }
  float rows = c.style == 0 || c.style == 2 ? c.cells.y * 0.5 : c.cells.y;
  float along = up * rows;
  float row = floor(along);
  if (up < 0.0 || (row + 0.5) / rows > min(value, 1.0)) return;
  if (abs(along - row - 0.5) * 2.0 > c.fill.y) return;
  target0 = c.colour;
}
)";

CompiledShader shaderText() {
  CompiledShader shader;
  shader.stage = ShaderStage::Pixel;
  shader.inputs.push_back({"SV_Position", 0, 0xF, ComponentType::Float32});
  shader.textures.push_back({0, -1, 0});
  shader.constants.push_back({0, 0, sizeof(Block)});
  shader.glsl = kShader;
  return shader;
}

float cells(std::int32_t asked, std::uint32_t pixels, std::size_t values) {
  if (asked <= 0 || static_cast<std::uint32_t>(asked) > pixels || static_cast<std::size_t>(asked) > values) {
    return static_cast<float>(pixels);
  }
  return static_cast<float>(asked);
}

}  // namespace

std::vector<float> waveformValues(const AudioBuffer& sound, std::size_t limit) {
  const std::size_t count = sound.sampleCount();
  if (count == 0 || limit == 0) return {};
  const float* left = sound.channelData(0);
  const float* right = sound.channelData(1);
  const std::size_t slots = std::min(count, limit);
  std::vector<float> values(slots);
  for (std::size_t slot = 0; slot < slots; ++slot) {
    const std::size_t first = slot * count / slots;
    const std::size_t end = std::max(first + 1, (slot + 1) * count / slots);
    float peak = 0.0f;
    for (std::size_t i = first; i < end; ++i) {
      const float mean = (left[i] + right[i]) * 0.5f;
      if (std::fabs(mean) > std::fabs(peak)) peak = mean;
    }
    values[slot] = peak;
  }
  return values;
}

WaveImage::WaveImage(GraphicsDevice& device) : device_(&device) {}

WaveImage::~WaveImage() = default;

std::unique_ptr<ResourceBuffer> WaveImage::draw(const std::vector<float>& values, const WaveLook& look) {
  if (look.width == 0 || look.height == 0) return nullptr;
  auto image = std::make_unique<ResourceBuffer>(*device_, look.width, look.height);
  if (values.empty()) {
    image->clear({0.0f, 0.0f, 0.0f, 0.0f});
    return image;
  }
  if (!shader_) {
    shader_ = std::make_unique<PixelShader>(*device_);
    shader_->load(shaderText());
    constants_ = std::make_unique<ConstantBufferCommon>(*device_);
    constants_->create(Block{});
  }
  std::vector<std::byte> bytes(values.size() * sizeof(float));
  std::memcpy(bytes.data(), values.data(), bytes.size());
  ResourceBuffer row(*device_, static_cast<std::uint32_t>(values.size()), 1, Format::R32Float, std::move(bytes));
  const Block block{{look.colour[0], look.colour[1], look.colour[2], look.colour[3]},
                    {static_cast<float>(look.width), static_cast<float>(look.height)},
                    {cells(look.columns, look.width, values.size()), cells(look.rows, look.height, SIZE_MAX)},
                    {look.fillX, look.fillY},
                    look.volume,
                    static_cast<std::int32_t>(look.style)};
  constants_->update(&block);
  PassOptions options;
  options.constants = constants_.get();
  shader_->draw(*image, {&row}, options);
  return image;
}

}  // namespace Media
