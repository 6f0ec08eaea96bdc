// An elliptical arc in the endpoints form of SVG turned into cubic Béziers, for path
// libraries that only draw axis-aligned arcs. Radii that cannot reach from one end to
// the other grow until they do, as SVG renderers do. Pure arithmetic.
#pragma once

#include <vector>

namespace Resource {

struct CubicSegment {
  double control1X, control1Y;
  double control2X, control2Y;
  double x, y;
};

// Segments of at most a quarter turn each. The same start and end give none; a zero
// radius gives one straight segment.
std::vector<CubicSegment> endpointArcToCubics(double startX, double startY, double x, double y, double radiusX,
                                              double radiusY, double rotation, bool clockwise, bool large);

}  // namespace Resource
