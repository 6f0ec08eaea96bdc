#include "media/pass/FramePassGlsl.h"

#include <array>

#include "media/pass/BlendStateTable.h"
#include "system/Exception.h"

namespace Media {

namespace {

// The block members mirror the structs of FramePassConstants.h member for member.
constexpr const char* kColorMatrixBlock = "layout(row_major) mat4 transform; vec4 offset;";
constexpr const char* kOutputBlock = "int blend; float alpha; ivec2 offset;";
constexpr const char* kBoxBlock = "int step; int offset;";

struct PassText {
  const char* block;  // members of the constants block; empty for none
  const char* body;   // sets color (and color1); may return false to discard
};

const std::array<PassText, kFramePassCount> kPassTexts{{
    // 0: colour matrix, the offset added to the colour first, alpha read as 1.
    {kColorMatrixBlock,
     "vec4 s = fetchZero(source0, pixel);\n"
     "color = c.transform * vec4(s.rgb + c.offset.rgb, 1.0);"},
    // 1: colour matrix on the saturated colour, the offset added last.
    {kColorMatrixBlock, "color = c.transform * clamp(fetchZero(source0, pixel), 0.0, 1.0) + c.offset;"},
    {"", "color = fetchZero(source0, pixel);"},
    {"vec4 color;", "color = c.color;"},
    {"", "color = vec4(1.0);"},
    {"ivec2 offset;", "color = fetchZero(source0, pixel + c.offset);"},
    {"ivec2 offset;", "color = fetchClamped(source0, pixel + c.offset);"},
    {"",
     "color = fetchZero(source0, pixel);\n"
     "color1 = fetchZero(source1, pixel);"},
    {"vec4 color;", "color = c.color * fetchZero(source0, pixel).a;"},
    {"float alpha;", "color = fetchZero(source0, pixel) * c.alpha;"},
    {kOutputBlock, "color = fetchZero(source0, pixel + c.offset) * c.alpha;"},
    {"", "color = texture(source0, uv);"},
    {"",
     "vec4 s = fetchZero(source0, pixel);\n"
     "color = vec4(s.rgb * s.a, s.a);"},
    {"",
     "vec4 s = fetchZero(source0, pixel);\n"
     "color = s.a > 0.0 ? vec4(s.rgb / s.a, s.a) : vec4(0.0, 0.0, 0.0, s.a);"},
    {"", "color = vec4(fetchZero(source0, pixel).rgb, 1.0);"},
    // 15: alpha saturated first, then the colour kept between 0 and it.
    {"",
     "vec4 s = fetchZero(source0, pixel);\n"
     "float a = clamp(s.a, 0.0, 1.0);\n"
     "color = vec4(clamp(s.rgb, vec3(0.0), vec3(a)), a);"},
    {"", "color = clamp(fetchZero(source0, pixel), 0.0, 1.0);"},
    // 17, 18: the mean of `step` pixels from index * step + offset, reads clamped.
    {kBoxBlock,
     "int n = max(c.step, 1);\n"
     "vec4 sum = vec4(0.0);\n"
     "for (int i = 0; i < n; ++i) sum += fetchClamped(source0, ivec2(pixel.x * n + c.offset + i, pixel.y));\n"
     "color = sum / float(n);"},
    {kBoxBlock,
     "int n = max(c.step, 1);\n"
     "vec4 sum = vec4(0.0);\n"
     "for (int i = 0; i < n; ++i) sum += fetchClamped(source0, ivec2(pixel.x, pixel.y * n + c.offset + i));\n"
     "color = sum / float(n);"},
    // 19: per axis, above 1.05 source pixels per target pixel ceil(ratio) taps (at
    // most 16) spread evenly over the footprint, else one; all taps averaged.
    {"vec2 inverseRatio;",
     "vec2 size = vec2(textureSize(source0, 0));\n"
     "int nx = resizeTaps(c.inverseRatio.x);\n"
     "int ny = resizeTaps(c.inverseRatio.y);\n"
     "vec4 sum = vec4(0.0);\n"
     "for (int j = 0; j < ny; ++j) {\n"
     "  for (int i = 0; i < nx; ++i) {\n"
     "    vec2 t = vec2((float(i) + 0.5) / float(nx), (float(j) + 0.5) / float(ny)) - 0.5;\n"
     "    sum += texture(source0, uv + t * c.inverseRatio / size);\n"
     "  }\n"
     "}\n"
     "color = sum / float(nx * ny);"},
    {"float threshold; float ratio; float limit;",
     "vec4 s = fetchZero(source0, pixel);\n"
     "float w = max(luma(s.rgb) - c.threshold, 0.0) * c.ratio;\n"
     "color = vec4(min(s.rgb * w, vec3(c.limit)), min(w, 1.0));"},
    // 21: e^(saturate(rgb) * base + 1); 22 undoes it, reading channels below e as e.
    {"float base;",
     "vec4 s = fetchZero(source0, pixel);\n"
     "color = vec4(exp2((clamp(s.rgb, 0.0, 1.0) * c.base + 1.0) * 1.442695), s.a);"},
    {"float baseInverse;",
     "vec4 s = fetchZero(source0, pixel);\n"
     "color = vec4((log(max(s.rgb, vec3(2.7182817))) - 1.0) * c.baseInverse, s.a);"},
    // 23: alpha = smoothstep of the inverted luma between the two limits; colour 0.
    {"float limitMin; float limitMax; vec2 scale;",
     "vec4 s = texture(source0, (uv - 0.5) * c.scale + 0.5);\n"
     "float t = clamp((1.0 - luma(s.rgb) - c.limitMin) / max(c.limitMax - c.limitMin, 1e-6), 0.0, 1.0);\n"
     "color = vec4(0.0, 0.0, 0.0, t * t * (3.0 - 2.0 * t));"},
    {kOutputBlock, "return blendMode(c.blend, c.alpha, fetchZero(source0, pixel), fetchZero(source1, pixel), color);"},
    {kOutputBlock,
     "return blendMode(c.blend, c.alpha, fetchZero(source0, pixel + c.offset), fetchZero(source1, pixel), color);"},
}};

// What one pixel of a source reads, and its size in pixels, by the layout of its texels.
constexpr const char* kTexelRgba = R"(vec4 pixelAt(sampler2D s, ivec2 p) {
  return texelFetch(s, p, 0);
}
ivec2 pixelSize(sampler2D s) {
  return textureSize(s, 0);
}
)";
constexpr const char* kTexelBgra = R"(vec4 pixelAt(sampler2D s, ivec2 p) {
  return texelFetch(s, p, 0).bgra;
}
ivec2 pixelSize(sampler2D s) {
  return textureSize(s, 0);
}
)";
// A pixel of packed YUY2 reads Cb, Y, Cr: its own Y and the chroma its pair shares.
constexpr const char* kTexelPackedYuy2 = R"(vec4 pixelAt(sampler2D s, ivec2 p) {
  vec4 t = texelFetch(s, ivec2(p.x >> 1, p.y), 0);
  return vec4(t.g, (p.x & 1) == 0 ? t.r : t.b, t.a, 1.0);
}
ivec2 pixelSize(sampler2D s) {
  return textureSize(s, 0) * ivec2(2, 1);
}
)";

constexpr const char* kFetch = R"(vec4 fetchZero(sampler2D s, ivec2 p) {
  return all(greaterThanEqual(p, ivec2(0))) && all(lessThan(p, pixelSize(s))) ? pixelAt(s, p) : vec4(0.0);
}
vec4 fetchClamped(sampler2D s, ivec2 p) {
  return pixelAt(s, clamp(p, ivec2(0), pixelSize(s) - 1));
}
float luma(vec3 c) {
  return dot(c, vec3(0.299, 0.587, 0.114));
}
int resizeTaps(float ratio) {
  return ratio > 1.05 ? min(int(ceil(ratio)), 16) : 1;
}
)";

// The user's blend modes on premultiplied colour: modes 0 to 12 give the colour to be
// drawn source-over, 20 to 23 the pixel that replaces the frame's.
constexpr const char* kBlendModes = R"(vec4 normalised(vec4 v) {
  return v.a > 0.0 ? v / v.a : vec4(0.0);
}
vec3 toYuv(vec3 c) {
  return vec3(dot(c, vec3(0.299, 0.587, 0.114)), dot(c, vec3(-0.169, -0.331, 0.5)), dot(c, vec3(0.5, -0.419, -0.081)));
}
vec3 fromYuv(vec3 c) {
  return vec3(c.x + 1.402 * c.z, c.x - 0.344 * c.y - 0.714 * c.z, c.x + 1.772 * c.y);
}
bool blendMode(int mode, float o, vec4 S, vec4 D, out vec4 color) {
  if (mode < 0 || (mode > 12 && mode < 20) || mode > 23) mode = 0;
  float a = S.a;
  float e = D.a;
  color = vec4(0.0);
  if (mode != 0 && a < 0.001) return false;
  switch (mode) {
    case 20: color = normalised(S * o + D) * min(a * o + e, 1.0); return true;
    case 21: color = normalised(S * o + D * (1.0 - a * o)) * min(a * o + e, 1.0); return true;
    case 22: color = normalised(S * o + D) * max(e, a * o); return true;
    case 23: color = normalised(D) * max(e - a * o, 0.0); return true;
  }
  vec3 s = S.rgb;
  vec3 d = D.rgb;
  vec3 k = s;
  switch (mode) {
    case 1: k = d * a + s; break;
    case 2: k = d * a - s; break;
    case 3: k = d * s; break;
    case 4: k = s + d * (a - s); break;
    case 5: k = mix(2.0 * (s + d * (a - s)) - a, 2.0 * d * s, lessThan(d, vec3(0.5))); break;
    case 6: k = max(s, a * d); break;
    case 7: k = min(s, a * d); break;
    case 8: k = fromYuv(vec3(toYuv(s).x, toYuv(a * d).yz)); break;
    case 9: k = fromYuv(vec3(toYuv(a * d).x, toYuv(s).yz)); break;
    case 10: k = clamp(d * a + s - a, 0.0, a); break;
    case 11: k = clamp(d * a + 2.0 * s - a, 0.0, a); break;
    case 12: k = abs(d * a - s); break;
  }
  color = vec4(k * o, a * o);
  return true;
}
)";

const char* factorExpression(BlendFactor factor) noexcept {
  switch (factor) {
    case BlendFactor::Zero: return "vec4(0.0)";
    case BlendFactor::One: return "vec4(1.0)";
    case BlendFactor::SrcColor: return "src";
    case BlendFactor::InvSrcColor: return "(1.0 - src)";
    case BlendFactor::SrcAlpha: return "vec4(src.a)";
    case BlendFactor::InvSrcAlpha: return "vec4(1.0 - src.a)";
    case BlendFactor::DestAlpha: return "vec4(dst.a)";
    case BlendFactor::InvDestAlpha: return "vec4(1.0 - dst.a)";
    case BlendFactor::DestColor: return "dst";
    case BlendFactor::InvDestColor: return "(1.0 - dst)";
    case BlendFactor::BlendFactor: return "factor";
    case BlendFactor::InvBlendFactor: return "(1.0 - factor)";
    case BlendFactor::Src1Color: return "src1";
    case BlendFactor::InvSrc1Color: return "(1.0 - src1)";
    case BlendFactor::Src1Alpha: return "vec4(src1.a)";
    case BlendFactor::InvSrc1Alpha: return "vec4(1.0 - src1.a)";
  }
  return "vec4(0.0)";
}

// One channel group (".rgb" or ".a") of the equation.
std::string combination(BlendOp op, BlendFactor src, BlendFactor dest, const char* part) {
  const std::string s = std::string("src") + part;
  const std::string d = std::string("dst") + part;
  const std::string fs = std::string(factorExpression(src)) + part;
  const std::string fd = std::string(factorExpression(dest)) + part;
  switch (op) {
    case BlendOp::Add: return s + " * " + fs + " + " + d + " * " + fd;
    case BlendOp::Subtract: return s + " * " + fs + " - " + d + " * " + fd;
    case BlendOp::RevSubtract: return d + " * " + fd + " - " + s + " * " + fs;
    case BlendOp::Min: return "min(" + s + ", " + d + ")";
    case BlendOp::Max: return "max(" + s + ", " + d + ")";
  }
  return s;
}

bool usesFactor(BlendFactor factor) noexcept {
  return factor == BlendFactor::BlendFactor || factor == BlendFactor::InvBlendFactor;
}

}  // namespace

std::string framePassGlsl(FramePass pass, TexelLayout sources) {
  const FramePassInfo& info = framePassInfo(pass);
  const PassText& text = kPassTexts[static_cast<std::size_t>(pass)];
  std::string glsl;
  for (std::uint32_t unit = 0; unit < info.sourceCount; ++unit) {
    glsl += "layout(binding = " + std::to_string(unit) + ") uniform sampler2D source" + std::to_string(unit) + ";\n";
  }
  if (*text.block != '\0') {
    glsl += "layout(std140, binding = 0) uniform FramePassConstants { ";
    glsl += text.block;
    glsl += " } c;\n";
  }
  switch (sources) {
    case TexelLayout::Rgba: glsl += kTexelRgba; break;
    case TexelLayout::Bgra: glsl += kTexelBgra; break;
    case TexelLayout::PackedYuy2: glsl += kTexelPackedYuy2; break;
  }
  glsl += kFetch;
  if (pass == FramePass::BlendMode || pass == FramePass::BlendModeOffset) glsl += kBlendModes;
  glsl += "bool framePass(ivec2 pixel, vec2 uv, out vec4 color, out vec4 color1) {\n";
  glsl += "color = vec4(0.0);\ncolor1 = vec4(0.0);\n";
  glsl += text.body;
  glsl += "\nreturn true;\n}\n";
  return glsl;
}

std::string blendModeGlsl() { return kBlendModes; }

std::string blendEquationGlsl(std::uint32_t blendState) {
  if (blendState >= kBlendStateCount) throw System::NoteException("Media::blendEquationGlsl", "invalid blend state.");
  const BlendStateDesc& state = kBlendStates[blendState];
  std::string glsl = "vec4 blendState(vec4 src, vec4 src1, vec4 dst, vec4 factor) {\n";
  if (!state.enable) return glsl + "return src;\n}\n";
  glsl += "vec3 rgb = " + combination(state.op, state.src, state.dest, ".rgb") + ";\n";
  glsl += "float a = " + combination(state.opAlpha, state.srcAlpha, state.destAlpha, ".a") + ";\n";
  return glsl + "return vec4(rgb, a);\n}\n";
}

bool blendStateUsesFactor(std::uint32_t blendState) noexcept {
  if (blendState >= kBlendStateCount) return false;
  const BlendStateDesc& s = kBlendStates[blendState];
  return s.enable && (usesFactor(s.src) || usesFactor(s.dest) || usesFactor(s.srcAlpha) || usesFactor(s.destAlpha));
}

}  // namespace Media
