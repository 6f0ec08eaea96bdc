// The constants of the frame passes, as C++ structs whose bytes are the std140 uniform
// block (binding 0) that the pass's GLSL declares. Each is a multiple of 16 bytes, so a
// struct can be handed to a constant buffer as it stands.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Media {

// Passes 0 and 1. `transform` is row-major: transform[row * 4 + column], and
// `out = transform * v` means out[row] = sum over columns of transform[row * 4 + column]
// * v[column], the way it is written on paper. The GLSL declares the matrix
// `layout(row_major)`, so the same bytes mean the same matrix there.
struct ColorMatrixConstants {
  float transform[16];
  float offset[4];
};

// Passes 3 (fill) and 8 (colour times the source's alpha).
struct ColorConstants {
  float color[4];
};

// Passes 5 and 6: the source is read at the target pixel plus `offset`.
struct alignas(16) OffsetConstants {
  std::int32_t offset[2];
};

// Pass 9.
struct alignas(16) AlphaConstants {
  float alpha;
};

// Passes 10, 24 and 25, which the output of an object shares as one 16-byte block:
// pass 10 ignores `blend`, pass 24 ignores `offset`.
struct OutputConstants {
  std::int32_t blend;
  float alpha;
  std::int32_t offset[2];
};

// Passes 17 and 18: `step` source pixels averaged from `x * step + offset` (or y).
struct alignas(16) BoxConstants {
  std::int32_t step;
  std::int32_t offset;
};

// Pass 19: source pixels per target pixel on each axis.
struct alignas(16) ResizeConstants {
  float inverseRatio[2];
};

// Pass 20.
struct alignas(16) GlowConstants {
  float threshold;
  float ratio;
  float limit;
};

// Pass 21.
struct alignas(16) ExpRemapConstants {
  float base;
};

// Pass 22.
struct alignas(16) LogRemapConstants {
  float baseInverse;
};

// Pass 23.
struct SoftMaskConstants {
  float limitMin;
  float limitMax;
  float scale[2];
};

static_assert(sizeof(ColorMatrixConstants) == 80 && offsetof(ColorMatrixConstants, offset) == 64);
static_assert(sizeof(OffsetConstants) == 16 && sizeof(AlphaConstants) == 16 && sizeof(BoxConstants) == 16);
static_assert(sizeof(OutputConstants) == 16 && offsetof(OutputConstants, offset) == 8);
static_assert(sizeof(ResizeConstants) == 16 && sizeof(GlowConstants) == 16);
static_assert(sizeof(SoftMaskConstants) == 16 && offsetof(SoftMaskConstants, scale) == 8);

}  // namespace Media
