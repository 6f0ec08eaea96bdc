// The 22 blend states that the fixed passes of effects choose by number. The device maps
// a row to fixed-function blending for the draw path; the compute path and the CPU
// reference evaluate the same row as arithmetic, so this table is the one source of all.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Media {

// Factors as Direct3D defines them. A *Color factor used for alpha takes its alpha
// component; the second source (Src1) is the second output of a pass (pass 7).
enum class BlendFactor : std::uint8_t {
  Zero,
  One,
  SrcColor,
  InvSrcColor,
  SrcAlpha,
  InvSrcAlpha,
  DestAlpha,
  InvDestAlpha,
  DestColor,
  InvDestColor,
  BlendFactor,
  InvBlendFactor,
  Src1Color,
  InvSrc1Color,
  Src1Alpha,
  InvSrc1Alpha,
};

// Numbered as in Direct3D (1 add, 5 max), the numbers the state table is written in.
// Min and Max ignore the factors.
enum class BlendOp : std::uint8_t { Add = 1, Subtract = 2, RevSubtract = 3, Min = 4, Max = 5 };

// One state: one render target, write mask 15, no alpha to coverage. With `enable`
// false the pass's output is written as it stands.
struct BlendStateDesc {
  bool enable;
  BlendFactor src;
  BlendFactor dest;
  BlendOp op;
  BlendFactor srcAlpha;
  BlendFactor destAlpha;
  BlendOp opAlpha;
};

inline constexpr std::size_t kBlendStateCount = 22;

// Images are premultiplied, so 0 is the plain source-over; 1 draws beneath what is
// there; 4, no blending, is what a draw without a state gets.
inline constexpr std::uint32_t kBlendStateSourceOver = 0;
inline constexpr std::uint32_t kBlendStateNone = 4;

namespace BlendStateRows {
using F = BlendFactor;
using O = BlendOp;
inline constexpr std::array<BlendStateDesc, kBlendStateCount> kRows = {{
    /*  0 */ {true, F::One, F::InvSrcAlpha, O::Add, F::One, F::InvSrcAlpha, O::Add},
    /*  1 */ {true, F::InvDestAlpha, F::One, O::Add, F::InvDestAlpha, F::One, O::Add},
    /*  2 */ {true, F::SrcAlpha, F::InvSrcAlpha, O::Add, F::One, F::InvSrcAlpha, O::Add},
    /*  3 */ {true, F::DestAlpha, F::InvSrcAlpha, O::Add, F::Zero, F::One, O::Add},
    /*  4 */ {false, F::Zero, F::Zero, O::Add, F::Zero, F::Zero, O::Add},
    /*  5 */ {true, F::InvSrc1Alpha, F::Src1Alpha, O::Add, F::InvSrc1Alpha, F::Src1Alpha, O::Add},
    /*  6 */ {true, F::Src1Alpha, F::InvSrc1Alpha, O::Add, F::Src1Alpha, F::InvSrc1Alpha, O::Add},
    /*  7 */ {true, F::InvSrc1Alpha, F::Zero, O::Add, F::InvSrc1Alpha, F::Zero, O::Add},
    /*  8 */ {true, F::Zero, F::SrcAlpha, O::Add, F::Zero, F::SrcAlpha, O::Add},
    /*  9 */ {true, F::Zero, F::InvSrcAlpha, O::Add, F::Zero, F::InvSrcAlpha, O::Add},
    /* 10 */ {true, F::Zero, F::SrcAlpha, O::Add, F::One, F::Zero, O::Add},
    /* 11 */ {true, F::Zero, F::SrcColor, O::Add, F::Zero, F::One, O::Add},
    /* 12 */ {true, F::One, F::One, O::Add, F::One, F::InvSrcAlpha, O::Add},
    /* 13 */ {true, F::One, F::One, O::Add, F::InvDestAlpha, F::One, O::Add},
    /* 14 */ {true, F::BlendFactor, F::One, O::Add, F::BlendFactor, F::InvSrcAlpha, O::Add},
    /* 15 */ {true, F::DestAlpha, F::Zero, O::Add, F::DestAlpha, F::Zero, O::Add},
    /* 16 */ {true, F::One, F::One, O::Max, F::One, F::One, O::Max},
    /* 17 */ {true, F::Zero, F::SrcAlpha, O::Add, F::Zero, F::One, O::Add},
    /* 18 */ {true, F::One, F::One, O::Add, F::One, F::One, O::Add},
    /* 19 */ {true, F::DestAlpha, F::One, O::Add, F::Zero, F::One, O::Add},
    /* 20 */ {true, F::BlendFactor, F::InvBlendFactor, O::Add, F::BlendFactor, F::InvBlendFactor, O::Add},
    /* 21 */ {true, F::InvBlendFactor, F::BlendFactor, O::Add, F::InvBlendFactor, F::BlendFactor, O::Add},
}};
}  // namespace BlendStateRows

inline constexpr const std::array<BlendStateDesc, kBlendStateCount>& kBlendStates = BlendStateRows::kRows;

}  // namespace Media
