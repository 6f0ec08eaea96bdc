// How quads become triangles. A quad is four points p0..p3 around its edge; it is drawn
// as the triangles p0 p1 p3 and p3 p1 p2, which share the diagonal p1-p3. For lit
// drawing a quad gets one normal, and a quad folded over that diagonal (its two
// triangles facing away from each other) is split along the other one instead.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "media/Vertex.h"

namespace Media {

// The corner order of the two triangles of a quad, starting at corner `first`.
constexpr std::array<std::size_t, 6> quadTriangleOrder(std::size_t first) noexcept {
  return {first, (first + 1) % 4, (first + 3) % 4, (first + 3) % 4, (first + 1) % 4, (first + 2) % 4};
}

// Cross product (b - a) x (c - a) of a triangle's corners, not normalised. For a
// triangle clockwise on the screen, a front face, it points towards the viewer (-z).
template <class V>
std::array<float, 3> triangleNormal(const V& a, const V& b, const V& c) noexcept {
  const float ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z;
  const float vx = c.x - a.x, vy = c.y - a.y, vz = c.z - a.z;
  return {uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx};
}

inline std::array<float, 3> normalised(const std::array<float, 3>& n) noexcept {
  const float length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
  if (length == 0.0f) return {0.0f, 0.0f, 0.0f};
  return {n[0] / length, n[1] / length, n[2] / length};
}

// Writes the six vertices of one quad, without normals.
template <class V>
void splitQuad(const V* quad, V* out) noexcept {
  constexpr std::array<std::size_t, 6> order = quadTriangleOrder(0);
  for (std::size_t i = 0; i < 6; ++i) out[i] = quad[order[i]];
}

// Writes the six vertices of one quad with the quad's normal: the normalised sum of the
// normals of its two triangles, taken from the split that is not folded.
template <class V>
void splitQuadWithNormal(const V* quad, typename WithNormal<V>::type* out) noexcept {
  std::size_t first = 0;
  std::array<float, 3> n0 = triangleNormal(quad[0], quad[1], quad[3]);
  std::array<float, 3> n1 = triangleNormal(quad[3], quad[1], quad[2]);
  if (n0[0] * n1[0] + n0[1] * n1[1] + n0[2] * n1[2] < 0.0f) {
    first = 1;
    n0 = triangleNormal(quad[1], quad[2], quad[0]);
    n1 = triangleNormal(quad[0], quad[2], quad[3]);
  }
  const std::array<float, 3> sum = normalised({n0[0] + n1[0], n0[1] + n1[1], n0[2] + n1[2]});
  const float normal[3] = {sum[0], sum[1], sum[2]};
  const std::array<std::size_t, 6> order = quadTriangleOrder(first);
  for (std::size_t i = 0; i < 6; ++i) out[i] = attachNormal(quad[order[i]], normal);
}

}  // namespace Media
