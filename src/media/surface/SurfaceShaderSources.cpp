#include "media/surface/SurfaceShaderSources.h"

#include <string>

#include "media/pass/FramePassGlsl.h"
#include "media/surface/SurfaceConstants.h"

namespace Media {

namespace {

constexpr const char* kConstantBlock =
    "layout(std140, binding = 0) uniform Constant {\n"
    "  mat4 projection;\n"
    "  float alpha;\n"
    "  int blend;\n"
    "  mat4 normalWorld;\n"
    "  float shine;\n"
    "} k;\n";

ShaderInputParameter floatInput(const char* name, std::uint8_t mask) {
  return ShaderInputParameter{name, 0, mask, ComponentType::Float32};
}

CompiledShader surfaceVertexShader(const char* semantic) {
  CompiledShader shader;
  shader.stage = ShaderStage::Vertex;
  shader.glsl = std::string("#version 450 core\nout gl_PerVertex { vec4 gl_Position; };\n") + kConstantBlock +
                "layout(location = 0) in vec3 position;\n"
                "layout(location = 1) in vec4 valueIn;\n"
                "layout(location = 0) out vec4 value;\n"
                "void main() {\n"
                "  gl_Position = vec4(position, 1.0) * k.projection;\n"
                "  value = valueIn;\n"
                "}\n";
  shader.inputs = {floatInput("POSITION", 7), floatInput(semantic, 15)};
  shader.constants = {{0, kSurfaceConstantBinding, sizeof(SurfaceConstants)}};
  return shader;
}

// The pixel shader's head: resources, constants, blend modes, and the composition with
// the frame that both pairs end with.
std::string pixelHead() {
  return std::string("#version 450 core\n") + kConstantBlock +
         "layout(binding = 0) uniform sampler2D texture0;\n"
         "layout(binding = 1) uniform sampler2D frameBuffer;\n"
         "layout(location = 0) in vec4 value;\n"
         "layout(location = 0) out vec4 target0;\n" +
         blendModeGlsl() +
         // The modes that replace the frame's pixel (20 and up) would need the draw
         // unblended; on a surface they count as 0.
         R"(bool surfaceBlend(vec4 source, float opacity, out vec4 color) {
  int mode = k.blend < 20 ? k.blend : 0;
  vec4 frame = mode != 0 ? texelFetch(frameBuffer, ivec2(gl_FragCoord.xy), 0) : vec4(0.0);
  return blendMode(mode, opacity, source, frame, color);
}
)";
}

// The footprint of the pixel on the texture is measured along the two screen axes, in
// texels. Under 1.05 on both, one sample; otherwise n taps along each axis, at the
// centres of n equal parts of the footprint, averaged. The gradients are given so that
// the read is defined where neighbouring pixels branch differently.
constexpr const char* kMinified = R"(vec4 minified(vec2 uv) {
  vec2 size = vec2(textureSize(texture0, 0));
  vec2 du = dFdx(uv);
  vec2 dv = dFdy(uv);
  vec2 footprint = vec2(length(du * size), length(dv * size));
  if (footprint.x < 1.05 && footprint.y < 1.05) return textureGrad(texture0, uv, du, dv);
  ivec2 n = clamp(ivec2(0.5 * footprint + 1.5), ivec2(1), ivec2(16));
  vec2 stepU = du / float(n.x);
  vec2 stepV = dv / float(n.y);
  vec4 sum = vec4(0.0);
  for (int j = 0; j < n.y; ++j) {
    for (int i = 0; i < n.x; ++i) {
      vec2 at = uv + (float(i) + 0.5 - 0.5 * float(n.x)) * stepU + (float(j) + 0.5 - 0.5 * float(n.y)) * stepV;
      sum += textureGrad(texture0, at, stepU, stepV);
    }
  }
  return sum / float(n.x * n.y);
}
)";

}  // namespace

CompiledShader texturedSurfaceVertexShader() { return surfaceVertexShader("TEXCOORD"); }

CompiledShader coloredSurfaceVertexShader() { return surfaceVertexShader("COLOR"); }

CompiledShader texturedSurfacePixelShader() {
  CompiledShader shader;
  shader.glsl = pixelHead() + kMinified +
                "void main() {\n"
                "  vec4 color;\n"
                "  if (!surfaceBlend(minified(value.xy), value.z * k.alpha, color)) discard;\n"
                "  target0 = color;\n"
                "}\n";
  shader.inputs = {floatInput("SV_Position", 15), floatInput("TEXCOORD", 7)};
  shader.textures = {{0, 0, kSurfaceTextureUnit}, {1, -1, kSurfaceFrameUnit}};
  shader.constants = {{0, kSurfaceConstantBinding, sizeof(SurfaceConstants)}};
  return shader;
}

CompiledShader coloredSurfacePixelShader() {
  CompiledShader shader;
  shader.glsl = pixelHead() +
                "void main() {\n"
                "  vec4 color;\n"
                "  if (!surfaceBlend(vec4(value.rgb * value.a, value.a), k.alpha, color)) discard;\n"
                "  target0 = color;\n"
                "}\n";
  shader.inputs = {floatInput("SV_Position", 15), floatInput("COLOR", 15)};
  shader.textures = {{0, -1, kSurfaceFrameUnit}};
  shader.constants = {{0, kSurfaceConstantBinding, sizeof(SurfaceConstants)}};
  return shader;
}

}  // namespace Media
