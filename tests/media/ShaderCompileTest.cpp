#include <glslang/Public/ResourceLimits.h>
#include <glslang/Public/ShaderLang.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <vector>

#include "media/ShaderCompile.h"
#include "system/Exception.h"
#include "system/Log.h"
#include "support/TempDirectory.h"

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

// The texture bindings as rows of texture slot, sampler slot and unit.
using TextureRows = std::vector<std::array<std::int64_t, 3>>;
TextureRows textureRows(const CompiledShader& shader) {
  TextureRows rows;
  for (const Media::ShaderTextureBinding& t : shader.textures) rows.push_back({t.textureSlot, t.samplerSlot, t.unit});
  return rows;
}

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
  EXPECT_EQ(textureRows(shader), (TextureRows{{0, -1, 0}}));
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
  EXPECT_EQ(textureRows(shader), (TextureRows{{0, -1, 0}, {0, 2, 1}, {1, 2, 2}}));
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

// A constant buffer's GLSL reads each member from the register and components that
// HLSL packing gives it. The offsets below are worked out by hand from the packing
// rules: nothing straddles a 16-byte register, each array element starts a register but
// the last one is not padded, a matrix takes one register per column, a struct starts a
// register and ends its last one.
TEST_F(ShaderCompileTest, ConstantBufferKeepsHlslPacking) {
  const CompiledShader shader = ShaderCompile::compileFromMemory("fx\\a.anm.pack", R"(
struct Pair { float x; float2 y; };
cbuffer Pack : register(b2) {
  float a;        // 0
  float2 b;       // 4, shares register 0 (std140 would move it to 8)
  float3 c;       // 16
  float d;        // 28
  float e[2];     // 32 and 48
  float f;        // 52, behind the unpadded last element
  float3 g;       // 64, would straddle at 56
  float4x4 m;     // 80, one column per register
  Pair p;         // 144: x 144, y 148
  int2 h;         // 160, after the struct's whole register
};
float4 pack(float4 pos : SV_Position) : SV_Target {
  return a + b.xyxy + float4(c, d) + e[0] + e[1] + f + g.x + mul(m, pos) + p.x + p.y.x + h.x;
}
)", "pack", "ps_5_0");
  ASSERT_EQ(shader.constants.size(), 1u);
  EXPECT_EQ(shader.constants[0].slot, 2u);
  EXPECT_EQ(shader.constants[0].binding, 2u);
  EXPECT_EQ(shader.constants[0].sizeInBytes, 176u);

  const char* const reads[] = {
      "v.m0 = uintBitsToFloat(sorvel_b2_registers[0].x);",
      "v.m1 = uintBitsToFloat(sorvel_b2_registers[0].yz);",
      "v.m2 = uintBitsToFloat(sorvel_b2_registers[1].xyz);",
      "v.m3 = uintBitsToFloat(sorvel_b2_registers[1].w);",
      "v.m4[0] = uintBitsToFloat(sorvel_b2_registers[2].x);",
      "v.m4[1] = uintBitsToFloat(sorvel_b2_registers[3].x);",
      "v.m5 = uintBitsToFloat(sorvel_b2_registers[3].y);",
      "v.m6 = uintBitsToFloat(sorvel_b2_registers[4].xyz);",
      // HLSL m[0][1] (row 0, column 1) lies in the register of column 1, component x.
      "v.m7[0][1] = uintBitsToFloat(sorvel_b2_registers[6].x);",
      "v.m7[3][0] = uintBitsToFloat(sorvel_b2_registers[5].w);",
      "v.m8.m0 = uintBitsToFloat(sorvel_b2_registers[9].x);",
      "v.m8.m1 = uintBitsToFloat(sorvel_b2_registers[9].yz);",
      "v.m9 = ivec2(sorvel_b2_registers[10].xy);",
  };
  for (const char* read : reads) EXPECT_NE(shader.glsl.find(read), std::string::npos) << read << "\n" << shader.glsl;
  EXPECT_NE(shader.glsl.find("layout(std140, binding = 2) uniform sorvel_b2_block"), std::string::npos);
  EXPECT_NE(shader.glsl.find("uvec4 sorvel_b2_registers[11];"), std::string::npos);
}

// Scripts pass their constants as floats in order from the start of b0; globals outside
// a cbuffer land there too.
TEST_F(ShaderCompileTest, GlobalsFormTheBufferAtRegisterZero) {
  const CompiledShader shader = ShaderCompile::compileFromMemory("fx\\a.anm.glob", R"(
float gain;
float2 shift;
float4 glob(float4 pos : SV_Position) : SV_Target { return gain * pos + shift.xyxy; }
)", "glob", "ps_5_0");
  ASSERT_EQ(shader.constants.size(), 1u);
  EXPECT_EQ(shader.constants[0].slot, 0u);
  EXPECT_EQ(shader.constants[0].sizeInBytes, 16u);
  EXPECT_NE(shader.glsl.find("v.m1 = uintBitsToFloat(sorvel_b0_registers[0].yz);"), std::string::npos) << shader.glsl;
}

}  // namespace

namespace {

// An #include is read beside the file that names it, and only inside the script
// folders: a library next to the script works, a nested one beside itself, while a
// file outside the folders or a missing one fails the compile with the reason.
TEST_F(ShaderCompileTest, IncludesAreReadBesideTheirFileInsideTheScriptFolders) {
  const TestSupport::TempDirectory folder;
  folder.writeFile("script/lib/tone.hlsli", "#include \"gain.hlsli\"\nfloat4 toned(float4 c) { return c * gain; }\n");
  folder.writeFile("script/lib/gain.hlsli", "static const float gain = 0.5;\n");
  folder.writeFile("secret.hlsli", "static const float gain = 2.0;\n");
  const std::vector<std::filesystem::path> scriptFolders = {folder.path() / "script"};
  const std::string name = (folder.path() / "script").string() + "\\fx.anm2.tone";
  const std::string body = "float4 tone(float4 p : SV_Position) : SV_Target { return TONE(p); }\n";

  const CompiledShader shader = ShaderCompile::compileFromMemory(
      name, "#include \"lib/tone.hlsli\"\n#define TONE(p) toned(p)\n" + body, "tone", "ps_5_0", scriptFolders);
  EXPECT_EQ(glslErrors(shader), "");

  struct Case {
    const char* include;
    std::vector<std::filesystem::path> folders;
    const char* reason;
  };
  const Case cases[] = {
      {"#include \"../secret.hlsli\"", scriptFolders, "outside the script folders"},
      {"#include <lib/tone.hlsli>", {}, "outside the script folders"},
      {"#include \"lib/missing.hlsli\"", scriptFolders, "cannot open include file"},
  };
  for (const Case& c : cases) {
    try {
      ShaderCompile::compileFromMemory(name, std::string(c.include) + "\n#define TONE(p) p\n" + body, "tone",
                                       "ps_5_0", c.folders);
      ADD_FAILURE() << c.include << " compiled";
    } catch (const System::NoteException& e) {
      EXPECT_EQ(e.message(), "D3DCompile() failed");
      EXPECT_NE(e.text().find(c.reason), std::string::npos) << c.include << ": " << e.text();
    }
  }
}

}  // namespace
