// The three rasterizer states. All treat clockwise triangles as front faces, clip by
// depth and use no scissor, multisampling or line antialiasing.
#pragma once

#include <array>
#include <cstdint>

namespace Media {

enum class FillMode : std::uint8_t { Solid, Wireframe };
enum class CullMode : std::uint8_t { None, Back };

struct RasterizerState {
  FillMode fill;
  CullMode cull;
};

inline constexpr std::size_t kRasterizerStateCount = 3;

inline constexpr std::array<RasterizerState, kRasterizerStateCount> kRasterizerStates{{
    {FillMode::Solid, CullMode::None},
    {FillMode::Solid, CullMode::Back},
    {FillMode::Wireframe, CullMode::None},
}};

}  // namespace Media
