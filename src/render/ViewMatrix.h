// The 3D set that places an object's quad: vectors are rows multiplied on the left, so
// a product applies its left factor first. An object's local matrix follows its view
// record; without a camera or group, the eye stands 1024 pixels in front of the picture
// plane, opposite each object's own x and y, so each object's perspective is centred on
// itself.
#pragma once

#include <array>

namespace Render {

struct ObjectView;

// Row-major: element (row, column) is at row * 4 + column.
using Matrix4 = std::array<float, 16>;
using Vector4 = std::array<float, 4>;

Matrix4 identityMatrix() noexcept;
Matrix4 multiply(const Matrix4& first, const Matrix4& second) noexcept;
Vector4 transform(const Vector4& point, const Matrix4& matrix) noexcept;

// Translate by -centre, scale by zoom, rotate z, then y, then x, translate by the position.
Matrix4 localMatrix(const ObjectView& view) noexcept;
// The default view-projection for a target of width by height and an object at (x, y).
Matrix4 defaultProjection(float width, float height, float x, float y) noexcept;

}  // namespace Render
