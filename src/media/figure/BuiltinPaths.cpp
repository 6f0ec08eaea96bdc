#include "media/figure/BuiltinPaths.h"

#include <cmath>
#include <numbers>

namespace Resource::BuiltinPaths {

namespace {

// Points i of n on a circle of `radius` around the origin, clockwise from straight up.
double pointX(std::int32_t i, std::int32_t n, double radius) {
  return std::sin(2.0 * std::numbers::pi * i / n) * radius;
}
double pointY(std::int32_t i, std::int32_t n, double radius) {
  return -std::cos(2.0 * std::numbers::pi * i / n) * radius;
}

double degrees(double value) { return value * std::numbers::pi / 180.0; }

// The inscribed circle's radius of the polygons the figure list offers.
double polygonInset(std::int32_t corners) {
  switch (corners) {
    case 3:
      return std::sin(degrees(30.0));
    case 5:
      return std::sin(degrees(54.0));
    case 6:
      return std::sin(degrees(60.0));
    default:
      return std::cos(std::numbers::pi / corners);
  }
}

}  // namespace

PathData rectangle() {
  PathData path(0.0, 0.0, 1.0, 1.0, 1.0);
  path.moveTo(0.0, 0.0).lineTo(1.0, 0.0).lineTo(1.0, 1.0).lineTo(0.0, 1.0).closePath();
  return path;
}

PathData circle() {
  PathData path(0.0, 0.0, 1.0, 1.0, 1.0);
  path.moveTo(1.0, 0.5)
      .arcTo(0.0, 0.5, 0.5, 0.5, 0.0, true, false)
      .arcTo(1.0, 0.5, 0.5, 0.5, 0.0, true, false)
      .closePath();
  return path;
}

PathData polygon(std::int32_t corners) {
  PathData path(-1.0, -1.0, 2.0, 2.0, polygonInset(corners));
  path.moveTo(0.0, -1.0);
  for (std::int32_t i = 1; i < corners; ++i) path.lineTo(pointX(i, corners, 1.0), pointY(i, corners, 1.0));
  path.closePath();
  return path;
}

// The inset is the distance of the star's edges from its centre, sin 18°: a wider stroke
// would close the inner pentagon.
PathData star() {
  PathData path(-1.0, -1.0, 2.0, 2.0, std::sin(degrees(18.0)));
  path.moveTo(0.0, -1.0);
  for (std::int32_t i = 1; i < 10; ++i) {
    const double radius = i % 2 == 0 ? 1.0 : kStarInnerRadius;
    path.lineTo(pointX(i, 10, radius), pointY(i, 10, radius));
  }
  path.closePath();
  return path;
}

// Two half ellipses for the lobes meet in the middle; two quadratic curves run down to the
// tip. Its top lies at 0.09, its sides at 0.1, its tip at 0.9.
PathData heart() {
  constexpr double kLobeRadiusY = 0.26;
  PathData path(0.0, 0.0, 1.0, 1.0, 0.6666);
  path.moveTo(0.1, 0.35)
      .arcTo(0.5, 0.35, 0.2, kLobeRadiusY, 0.0, true, false)
      .arcTo(0.9, 0.35, 0.2, kLobeRadiusY, 0.0, true, false)
      .bezier2To(0.9, 0.5, 0.5, 0.9)
      .bezier2To(0.1, 0.5, 0.1, 0.35)
      .closePath();
  return path;
}

}  // namespace Resource::BuiltinPaths
