#include <gtest/gtest.h>

#include "media/ShaderCompile.h"

namespace {

// A constant buffer's GLSL reads each member from the register and components that
// HLSL packing gives it. The offsets below are worked out by hand from the packing
// rules: nothing straddles a 16-byte register, each array element starts a register but
// the last one is not padded, a matrix takes one register per column, a struct starts a
// register and ends its last one.
TEST(ShaderCompileLayoutTest, ConstantBufferKeepsHlslPacking) {
  const Media::CompiledShader shader = Media::ShaderCompile::compileFromMemory("fx\\a.anm.pack", R"(
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
TEST(ShaderCompileLayoutTest, GlobalsFormTheBufferAtRegisterZero) {
  const Media::CompiledShader shader = Media::ShaderCompile::compileFromMemory("fx\\a.anm.glob", R"(
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
