#include <glslang/Public/ResourceLimits.h>
#include <glslang/Public/ShaderLang.h>
#include <gtest/gtest.h>

#include "media/ShaderCompile.h"
#include "system/Exception.h"
#include "system/Log.h"

namespace {

using Media::ComponentType;
using Media::CompiledShader;
using Media::ShaderCompile;

// Checks the GLSL as the driver will see it: as GLSL 4.50 core, with every image format
// token defined after #version the way the device defines it.
std::string glslErrors(const CompiledShader& shader) {
  glslang::InitializeProcess();
  std::string glsl = shader.glsl;
  std::string defines;
  for (const Media::ShaderImageBinding& image : shader.images) {
    defines += "#define SORVEL_IMAGE_FORMAT_" + std::to_string(image.unit) + " rgba8\n";
  }
  glsl.insert(glsl.find('\n') + 1, defines);
  const EShLanguage language = shader.stage == Media::ShaderStage::Compute ? EShLangCompute
                               : shader.stage == Media::ShaderStage::Vertex ? EShLangVertex
                                                                             : EShLangFragment;
  glslang::TShader checker(language);
  const char* text = glsl.c_str();
  checker.setStrings(&text, 1);
  const bool parsed = checker.parse(GetDefaultResources(), 450, ECoreProfile, true, false, EShMsgDefault);
  glslang::FinalizeProcess();
  return parsed ? std::string() : std::string(checker.getInfoLog()) + "\n" + glsl;
}

class ShaderCompileTest : public ::testing::Test {
 protected:
  // A failed compile logs its ERROR line; keep the test output quiet.
  void SetUp() override { System::Log::setHandler([](const System::Log::Type&, const char*, const char*) {}); }
  void TearDown() override { System::Log::resetHandler(); }
};

void expectInput(const Media::ShaderInputParameter& input, const char* name, std::uint32_t index, std::uint8_t mask,
                 ComponentType type) {
  EXPECT_EQ(input.semanticName, name);
  EXPECT_EQ(input.semanticIndex, index);
  EXPECT_EQ(input.mask, mask) << name;
  EXPECT_EQ(input.componentType, type) << name;
}

TEST_F(ShaderCompileTest, PositionOnlyPixelShaderLoadsByPixel) {
  const CompiledShader shader = ShaderCompile::compileFromMemory("fx\\a.anm.invert", R"(
Texture2D src : register(t0);
float4 invert(float4 pos : SV_Position) : SV_Target {
  float4 c = src.Load(int3(pos.xy, 0));
  return float4(c.a - c.rgb, c.a);
}
)", "invert", "ps_5_0");
  ASSERT_EQ(shader.inputs.size(), 1u);
  expectInput(shader.inputs[0], "SV_Position", 0, 15, ComponentType::Float32);
  ASSERT_EQ(shader.textures.size(), 1u);
  EXPECT_EQ(shader.textures[0].textureSlot, 0u);
  EXPECT_EQ(shader.textures[0].samplerSlot, -1);
  EXPECT_EQ(shader.textures[0].unit, 0u);
  EXPECT_NE(shader.glsl.find("texelFetch"), std::string::npos);
  // The pixel centre is read as it comes: the device's upper-left origin already
  // matches, so the position must not be flipped or re-declared.
  EXPECT_EQ(shader.glsl.find("origin_upper_left"), std::string::npos);
  EXPECT_EQ(shader.glsl.find("gl_FragCoord.y *"), std::string::npos);
  EXPECT_EQ(glslErrors(shader), "");
}

TEST_F(ShaderCompileTest, TexCoordPixelShaderKeepsUnusedPositionAndPairsSamplers) {
  // The position is declared but never read: the signature still holds it, or the
  // shader would lose its draw function.
  const CompiledShader shader = ShaderCompile::compileFromMemory("fx\\a.anm.mix", R"(
Texture2D base : register(t0);
Texture2D over : register(t1);
SamplerState smp : register(s2);
float4 mix(float4 pos : SV_Position, float2 uv : TEXCOORD0) : SV_Target {
  return over.Sample(smp, uv) + base.Load(int3(uv * 4, 0)) + base.Sample(smp, uv);
}
)", "mix", "ps_5_0");
  ASSERT_EQ(shader.inputs.size(), 2u);
  expectInput(shader.inputs[0], "SV_Position", 0, 15, ComponentType::Float32);
  expectInput(shader.inputs[1], "TEXCOORD", 0, 3, ComponentType::Float32);

  // One unit per pair, ordered by texture, then sampler; a load pairs with no sampler.
  ASSERT_EQ(shader.textures.size(), 3u);
  const std::int32_t expected[3][3] = {{0, -1, 0}, {0, 2, 1}, {1, 2, 2}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(shader.textures[i].textureSlot, static_cast<std::uint32_t>(expected[i][0])) << i;
    EXPECT_EQ(shader.textures[i].samplerSlot, expected[i][1]) << i;
    EXPECT_EQ(shader.textures[i].unit, static_cast<std::uint32_t>(expected[i][2])) << i;
  }
  EXPECT_NE(shader.glsl.find("layout(binding = 2) uniform sampler2D sorvel_t1_s2;"), std::string::npos);
  EXPECT_NE(shader.glsl.find("layout(location = 0) in vec2"), std::string::npos);
  EXPECT_EQ(glslErrors(shader), "");
}

TEST_F(ShaderCompileTest, VertexSignatureSplitsSemanticIndexAndType) {
  const CompiledShader shader = ShaderCompile::compileFromMemory("builtin.vs", R"(
struct VsIn { float3 pos : POSITION; uint id : TEXCOORD1; int2 cell : TEXCOORD12; float4 col : COLOR; };
float4 vs(VsIn v) : SV_Position { return float4(v.pos + v.col.rgb * (v.id + v.cell.x), 1); }
)", "vs", "vs_5_0");
  ASSERT_EQ(shader.inputs.size(), 4u);
  expectInput(shader.inputs[0], "POSITION", 0, 7, ComponentType::Float32);
  expectInput(shader.inputs[1], "TEXCOORD", 1, 1, ComponentType::UInt32);
  expectInput(shader.inputs[2], "TEXCOORD", 12, 3, ComponentType::SInt32);
  expectInput(shader.inputs[3], "COLOR", 0, 15, ComponentType::Float32);
  EXPECT_EQ(glslErrors(shader), "");
}

TEST_F(ShaderCompileTest, ComputeShaderImagesTakeTheirFormatFromTheDevice) {
  const CompiledShader shader = ShaderCompile::compileFromMemory("fx\\a.anm.put", R"(
RWTexture2D<float4> dst : register(u0);
RWTexture2D<float4> acc : register(u1);
Texture2D src : register(t0);
cbuffer Put : register(b0) { float4 color; int2 pos; };
[numthreads(8, 4, 1)]
void put(uint3 id : SV_DispatchThreadID) {
  acc[id.xy] += src.Load(int3(id.xy, 0));
  dst[id.xy + pos] = color;
}
)", "put", "cs_5_0");
  EXPECT_EQ(shader.stage, Media::ShaderStage::Compute);
  EXPECT_EQ(shader.threadGroupSize[0], 8u);
  EXPECT_EQ(shader.threadGroupSize[1], 4u);
  EXPECT_EQ(shader.threadGroupSize[2], 1u);
  EXPECT_TRUE(shader.inputs.empty());
  ASSERT_EQ(shader.images.size(), 2u);
  for (const Media::ShaderImageBinding& image : shader.images) {
    EXPECT_EQ(image.unit, image.slot);
    const std::string declaration = "layout(binding = " + std::to_string(image.unit) + ", SORVEL_IMAGE_FORMAT_" +
                                    std::to_string(image.unit) + ")";
    EXPECT_NE(shader.glsl.find(declaration), std::string::npos) << shader.glsl;
  }
  EXPECT_EQ(shader.glsl.find("rgba32f"), std::string::npos);
  ASSERT_EQ(shader.constants.size(), 1u);
  EXPECT_EQ(shader.constants[0].sizeInBytes, 32u);
  EXPECT_EQ(glslErrors(shader), "");
}

TEST_F(ShaderCompileTest, FailuresCarryTheCompilerText) {
  struct Case {
    const char* what;
    const char* source;
    const char* entry;
    const char* profile;
    const char* compilerText;
  };
  const Case cases[] = {
      {"warning", "[fancy] float4 main(float4 p : SV_Position) : SV_Target { return 1; }", "main", "ps_5_0",
       "unrecognized attribute"},
      {"warning", "struct S { float a = 1; }; float4 main(float4 p : SV_Position) : SV_Target { S s; s.a = 2; return s.a; }",
       "main", "ps_5_0", "initializers ignored"},
      {"syntax error", "float4 main(float4 p : SV_Position) : SV_Target { return p.x }", "main", "ps_5_0",
       "ERROR: fx.main:1:"},
      {"missing entry", "float4 main(float4 p : SV_Position) : SV_Target { return 1; }", "blur", "ps_5_0",
       "Entry point not found"},
      {"profile", "float4 main(float4 p : SV_Position) : SV_Target { return 1; }", "main", "gs_5_0", "gs_5_0"},
  };
  for (const Case& c : cases) {
    try {
      ShaderCompile::compileFromMemory("fx.main", c.source, c.entry, c.profile);
      ADD_FAILURE() << c.what << " compiled";
    } catch (const System::NoteException& e) {
      EXPECT_EQ(e.message(), "D3DCompile() failed") << c.what;
      EXPECT_NE(e.text().find(c.compilerText), std::string::npos) << c.what << ": " << e.text();
      EXPECT_NE(e.text().find("[Place]\nMedia::ShaderCompile::compileFromMemory()"), std::string::npos) << c.what;
    }
  }
}

}  // namespace
