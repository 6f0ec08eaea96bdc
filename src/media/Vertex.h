// The vertex records of the vertex lists, laid out as the vertex shaders read them:
// a position of three floats, then four floats of texture data or colour, then, in the
// lit forms, a normal of three floats.
#pragma once

namespace Media {

struct XYZ_UV {
  float x, y, z;
  float u, v, s, t;
};

struct XYZ_COL {
  float x, y, z;
  float r, g, b, a;
};

struct XYZ_UV_NORM {
  float x, y, z;
  float u, v, s, t;
  float nx, ny, nz;
};

struct XYZ_COL_NORM {
  float x, y, z;
  float r, g, b, a;
  float nx, ny, nz;
};

// The lit form of each record, and how a record gets its normal.
template <class V>
struct WithNormal;
template <>
struct WithNormal<XYZ_UV> {
  using type = XYZ_UV_NORM;
};
template <>
struct WithNormal<XYZ_COL> {
  using type = XYZ_COL_NORM;
};
template <>
struct WithNormal<XYZ_UV_NORM> {
  using type = XYZ_UV_NORM;
};
template <>
struct WithNormal<XYZ_COL_NORM> {
  using type = XYZ_COL_NORM;
};

template <class V>
typename WithNormal<V>::type attachNormal(const V& vertex, const float (&normal)[3]) {
  typename WithNormal<V>::type lit{};
  lit.x = vertex.x;
  lit.y = vertex.y;
  lit.z = vertex.z;
  if constexpr (requires { vertex.u; }) {
    lit.u = vertex.u, lit.v = vertex.v, lit.s = vertex.s, lit.t = vertex.t;
  } else {
    lit.r = vertex.r, lit.g = vertex.g, lit.b = vertex.b, lit.a = vertex.a;
  }
  lit.nx = normal[0], lit.ny = normal[1], lit.nz = normal[2];
  return lit;
}

}  // namespace Media
