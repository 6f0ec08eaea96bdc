#include "media/figure/EndpointArc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Resource {

namespace {

double angleBetween(double ux, double uy, double vx, double vy) {
  return std::atan2(ux * vy - uy * vx, ux * vx + uy * vy);
}

}  // namespace

std::vector<CubicSegment> endpointArcToCubics(double startX, double startY, double x, double y, double radiusX,
                                              double radiusY, double rotation, bool clockwise, bool large) {
  if (startX == x && startY == y) return {};
  double rx = std::abs(radiusX);
  double ry = std::abs(radiusY);
  if (rx == 0.0 || ry == 0.0) return {{startX, startY, x, y, x, y}};

  const double phi = rotation * std::numbers::pi / 180.0;
  const double cosPhi = std::cos(phi);
  const double sinPhi = std::sin(phi);
  // The start in the ellipse's own axes, relative to the chord's middle.
  const double halfX = (startX - x) / 2.0;
  const double halfY = (startY - y) / 2.0;
  const double x1 = cosPhi * halfX + sinPhi * halfY;
  const double y1 = -sinPhi * halfX + cosPhi * halfY;
  const double lambda = (x1 * x1) / (rx * rx) + (y1 * y1) / (ry * ry);
  if (lambda > 1.0) {
    rx *= std::sqrt(lambda);
    ry *= std::sqrt(lambda);
  }
  const double numerator = rx * rx * ry * ry - rx * rx * y1 * y1 - ry * ry * x1 * x1;
  const double denominator = rx * rx * y1 * y1 + ry * ry * x1 * x1;
  const double sign = large != clockwise ? 1.0 : -1.0;
  const double coefficient = sign * std::sqrt(std::max(0.0, numerator / denominator));
  const double centreX1 = coefficient * rx * y1 / ry;
  const double centreY1 = -coefficient * ry * x1 / rx;
  const double centreX = cosPhi * centreX1 - sinPhi * centreY1 + (startX + x) / 2.0;
  const double centreY = sinPhi * centreX1 + cosPhi * centreY1 + (startY + y) / 2.0;

  const double startAngle = angleBetween(1.0, 0.0, (x1 - centreX1) / rx, (y1 - centreY1) / ry);
  double sweep = angleBetween((x1 - centreX1) / rx, (y1 - centreY1) / ry, (-x1 - centreX1) / rx, (-y1 - centreY1) / ry);
  if (!clockwise && sweep > 0.0) sweep -= 2.0 * std::numbers::pi;
  if (clockwise && sweep < 0.0) sweep += 2.0 * std::numbers::pi;

  const int count = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (std::numbers::pi / 2.0) - 1e-9)));
  const double step = sweep / count;
  const double handle = 4.0 / 3.0 * std::tan(step / 4.0);
  // A point given on the unit circle, placed on the ellipse.
  auto placeX = [&](double ux, double uy) { return centreX + rx * cosPhi * ux - ry * sinPhi * uy; };
  auto placeY = [&](double ux, double uy) { return centreY + rx * sinPhi * ux + ry * cosPhi * uy; };

  std::vector<CubicSegment> segments;
  segments.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const double a1 = startAngle + step * i;
    const double a2 = a1 + step;
    const double c1x = std::cos(a1) - handle * std::sin(a1);
    const double c1y = std::sin(a1) + handle * std::cos(a1);
    const double c2x = std::cos(a2) + handle * std::sin(a2);
    const double c2y = std::sin(a2) - handle * std::cos(a2);
    CubicSegment segment{placeX(c1x, c1y), placeY(c1x, c1y), placeX(c2x, c2y), placeY(c2x, c2y),
                         placeX(std::cos(a2), std::sin(a2)), placeY(std::cos(a2), std::sin(a2))};
    if (i == count - 1) {
      segment.x = x;
      segment.y = y;
    }
    segments.push_back(segment);
  }
  return segments;
}

}  // namespace Resource
