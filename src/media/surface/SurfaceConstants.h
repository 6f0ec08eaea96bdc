// The constants that every pair of the 3D drawing set shares: the block `Constant`, one
// 160-byte std140 uniform block at binding 0 of both stages. An effect fills this struct
// and hands it to its constant buffer as it stands.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Media {

struct SurfaceConstants {
  // The transpose of world * view-projection, row-major: projection[row * 4 + column].
  // Vectors are rows multiplied on the left, so a vertex lands at p * (world * view-
  // projection). The GLSL declares the matrix with the default column-major layout: the
  // transposed bytes read column by column give back world * view-projection itself, and
  // the shader computes `vec4(position, 1.0) * projection`, a row vector times it.
  float projection[16];
  // The opacity of the draw, 0 to 1.
  float alpha;
  // The user's blend mode, 0 to 12; 20 and up count as 0 on the surface pairs.
  std::int32_t blend;
  float padding0[2];
  // The inverse of the world matrix, and the shine; read only by the pairs that light.
  float normalWorld[16];
  float shine;
  float padding1[3];
};

static_assert(sizeof(SurfaceConstants) == 160);
static_assert(offsetof(SurfaceConstants, alpha) == 64 && offsetof(SurfaceConstants, blend) == 68);
static_assert(offsetof(SurfaceConstants, normalWorld) == 80 && offsetof(SurfaceConstants, shine) == 144);

}  // namespace Media
