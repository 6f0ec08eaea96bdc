#include "media/pass/FramePassShaders.h"

#include <string>

#include "media/pass/BlendStateTable.h"
#include "media/pass/FramePassGlsl.h"
#include "system/Exception.h"

namespace Media {

namespace {

constexpr const char* kVersion = "#version 450\n";

constexpr const char* kComputeHead = R"(layout(local_size_x = 16, local_size_y = 16) in;
layout(binding = 0, SORVEL_IMAGE_FORMAT_0) uniform image2D target0;
)";

void addSources(CompiledShader& shader, const FramePassInfo& info) {
  for (std::uint32_t unit = 0; unit < info.sourceCount; ++unit) {
    shader.textures.push_back({unit, info.textureCoordinates && unit == 0 ? 0 : -1, unit});
  }
  if (info.constantsSize > 0) shader.constants.push_back({0, 0, (info.constantsSize + 15) / 16 * 16});
}

CompiledShader computeShader() {
  CompiledShader shader;
  shader.stage = ShaderStage::Compute;
  shader.images.push_back({0, 0});
  shader.threadGroupSize[0] = kFramePassGroupSize;
  shader.threadGroupSize[1] = kFramePassGroupSize;
  return shader;
}

}  // namespace

CompiledShader framePassPixelShader(FramePass pass) {
  return framePassPixelShader(pass, TexelLayout::Rgba, TexelLayout::Rgba);
}

CompiledShader framePassPixelShader(FramePass pass, TexelLayout sources, TexelLayout target) {
  const FramePassInfo& info = framePassInfo(pass);
  CompiledShader shader;
  shader.stage = ShaderStage::Pixel;
  shader.inputs.push_back({"SV_Position", 0, 0xF, ComponentType::Float32});
  if (info.textureCoordinates) shader.inputs.push_back({"TEXCOORD", 0, 0x3, ComponentType::Float32});
  addSources(shader, info);

  std::string& glsl = shader.glsl;
  glsl = kVersion + framePassGlsl(pass, sources);
  if (info.textureCoordinates) glsl += "layout(location = 0) in vec2 TEXCOORD;\n";
  glsl += "layout(location = 0, index = 0) out vec4 target0;\n";
  if (info.secondOutput) glsl += "layout(location = 0, index = 1) out vec4 target1;\n";
  const char* uv = info.textureCoordinates ? "TEXCOORD" : "vec2(0.0)";
  if (target == TexelLayout::PackedYuy2) {
    // Each texel is a pair of pixels; the last pair of an odd width repeats its pixel.
    glsl += "void main() {\n  ivec2 pixel = ivec2(gl_FragCoord.xy) * ivec2(2, 1);\n  vec4 p0, p1, unused;\n";
    glsl += std::string("  framePass(pixel, ") + uv + ", p0, unused);\n";
    glsl += "  framePass(ivec2(min(pixel.x + 1, pixelSize(source0).x - 1), pixel.y), ";
    glsl += std::string(uv) + ", p1, unused);\n";
    glsl += "  target0 = vec4(p0.x, p0.y, p1.x, p0.z);\n}\n";
    return shader;
  }
  glsl += "void main() {\n  vec4 color, color1;\n  if (!framePass(ivec2(gl_FragCoord.xy), ";
  glsl += uv;
  glsl += ", color, color1)) discard;\n";
  glsl += target == TexelLayout::Bgra ? "  target0 = color.bgra;\n" : "  target0 = color;\n";
  if (info.secondOutput) glsl += "  target1 = color1;\n";
  glsl += "}\n";
  return shader;
}

CompiledShader framePassComputeShader(FramePass pass, std::uint32_t blendState) {
  const FramePassInfo& info = framePassInfo(pass);
  const bool blending = blendState < kBlendStateCount && kBlendStates[blendState].enable;
  const bool factor = blendStateUsesFactor(blendState);
  CompiledShader shader = computeShader();
  addSources(shader, info);
  if (factor) shader.constants.push_back({1, 1, 16});

  std::string& glsl = shader.glsl;
  glsl = kVersion;
  glsl += kComputeHead;
  if (factor) glsl += "layout(std140, binding = 1) uniform FramePassBlendFactor { vec4 blendFactor; } k;\n";
  glsl += framePassGlsl(pass);
  glsl += blendEquationGlsl(blendState);
  glsl += R"(void main() {
  ivec2 pixel = ivec2(gl_GlobalInvocationID.xy);
  ivec2 size = imageSize(target0);
  if (pixel.x >= size.x || pixel.y >= size.y) return;
  vec4 color, color1;
  if (!framePass(pixel, (vec2(pixel) + 0.5) / vec2(size), color, color1)) return;
)";
  if (!blending) {
    glsl += "  imageStore(target0, pixel, color);\n}\n";
  } else {
    glsl += "  imageStore(target0, pixel, blendState(color, color1, imageLoad(target0, pixel), ";
    glsl += factor ? "k.blendFactor" : "vec4(0.0)";
    glsl += "));\n}\n";
  }
  return shader;
}

CompiledShader sourceOverComputeShader(std::uint32_t layerCount) {
  if (layerCount == 0 || layerCount > kMaxFusedLayers) {
    throw System::NoteException("Media::sourceOverComputeShader", "invalid layer count.", std::to_string(layerCount));
  }
  CompiledShader shader = computeShader();
  for (std::uint32_t unit = 0; unit < layerCount; ++unit) shader.textures.push_back({unit, -1, unit});
  const std::string count = std::to_string(layerCount);
  shader.glsl = std::string(kVersion) + kComputeHead + "layout(binding = 0) uniform sampler2D layers[" + count +
                "];\n" + R"(void main() {
  ivec2 pixel = ivec2(gl_GlobalInvocationID.xy);
  ivec2 size = imageSize(target0);
  if (pixel.x >= size.x || pixel.y >= size.y) return;
  vec4 d = imageLoad(target0, pixel);
  for (int i = 0; i < )" + count + R"(; ++i) {
    ivec2 layerSize = textureSize(layers[i], 0);
    vec4 s = pixel.x < layerSize.x && pixel.y < layerSize.y ? texelFetch(layers[i], pixel, 0) : vec4(0.0);
    d = s + d * (1.0 - s.a);
  }
  imageStore(target0, pixel, d);
}
)";
  return shader;
}

}  // namespace Media
