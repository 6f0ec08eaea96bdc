// The 3D set that places an object's quad: vectors are rows multiplied on the left, so
// a product applies its left factor first. An object's local matrix follows its view
// record; without a camera or group, the eye stands 1024 pixels in front of the picture
// plane, opposite each object's own x and y, so each object's perspective is centred on
// itself. Inline, since effects place their quads with it and the effect library does
// not link the render library.
#pragma once

#include <array>
#include <cmath>

#include "render/ObjectContext.h"

namespace Render {

// Row-major: element (row, column) is at row * 4 + column.
using Matrix4 = std::array<float, 16>;
using Vector4 = std::array<float, 4>;

inline constexpr float kRadiansPerDegree = 0.017453292f;

inline Matrix4 identityMatrix() noexcept { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

inline Matrix4 translation(float x, float y, float z) noexcept {
  Matrix4 m = identityMatrix();
  m[12] = x;
  m[13] = y;
  m[14] = z;
  return m;
}

inline Matrix4 scaling(float x, float y, float z) noexcept {
  Matrix4 m = identityMatrix();
  m[0] = x;
  m[5] = y;
  m[10] = z;
  return m;
}

inline Matrix4 rotationZ(float degrees) noexcept {
  const float c = std::cos(degrees * kRadiansPerDegree), s = std::sin(degrees * kRadiansPerDegree);
  return {c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

inline Matrix4 rotationY(float degrees) noexcept {
  const float c = std::cos(degrees * kRadiansPerDegree), s = std::sin(degrees * kRadiansPerDegree);
  return {c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1};
}

inline Matrix4 rotationX(float degrees) noexcept {
  const float c = std::cos(degrees * kRadiansPerDegree), s = std::sin(degrees * kRadiansPerDegree);
  return {1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1};
}

inline Matrix4 multiply(const Matrix4& first, const Matrix4& second) noexcept {
  Matrix4 product{};
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      float sum = 0.0f;
      for (int k = 0; k < 4; ++k) sum += first[row * 4 + k] * second[k * 4 + column];
      product[row * 4 + column] = sum;
    }
  }
  return product;
}

inline Vector4 transform(const Vector4& point, const Matrix4& matrix) noexcept {
  Vector4 result{};
  for (int column = 0; column < 4; ++column) {
    float sum = 0.0f;
    for (int k = 0; k < 4; ++k) sum += point[k] * matrix[k * 4 + column];
    result[column] = sum;
  }
  return result;
}

// Translate by -centre, scale by zoom, rotate z, then y, then x, translate by the position.
inline Matrix4 localMatrix(const ObjectView& view) noexcept {
  Matrix4 m = translation(-view.centreX, -view.centreY, -view.centreZ);
  m = multiply(m, scaling(view.zoomX, view.zoomY, view.zoomZ));
  m = multiply(m, rotationZ(view.rotationZ));
  m = multiply(m, rotationY(view.rotationY));
  m = multiply(m, rotationX(view.rotationX));
  return multiply(m, translation(view.x, view.y, view.z));
}

// The default view-projection for a target of width by height and an object at (x, y).
inline Matrix4 defaultProjection(float width, float height, float x, float y) noexcept {
  const Matrix4 projection{2048.0f / width, 0, 0, 0, 0, -2048.0f / height, 0, 0, 0, 0, 0, 1, 0, 0, 51.2f, 0};
  Matrix4 shift = identityMatrix();
  shift[12] = 2.0f * x / width;
  shift[13] = -2.0f * y / height;
  return multiply(multiply(translation(-x, -y, 1024.0f), projection), shift);
}

}  // namespace Render
