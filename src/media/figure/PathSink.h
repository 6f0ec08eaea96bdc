// Where a vector path goes when it is emitted: the platform's path object of a figure
// drawing, or a recorder in tests. Coordinates are pixels of the target, y downwards.
// A sink belongs to the one drawing that made it.
#pragma once

namespace Resource {

class PathSink {
 public:
  virtual ~PathSink() = default;

  virtual void beginFigure(double x, double y) = 0;
  virtual void addLine(double x, double y) = 0;
  // An elliptical arc from the current point to (x, y), given as the endpoints form of
  // SVG: radii, the ellipse's rotation in degrees, `clockwise` for the sweep direction
  // on a y-down screen and `large` for the larger of the two possible arcs.
  virtual void addArc(double x, double y, double radiusX, double radiusY, double rotation, bool clockwise,
                      bool large) = 0;
  virtual void addQuadraticBezier(double controlX, double controlY, double x, double y) = 0;
  virtual void endFigure(bool closed) = 0;
};

}  // namespace Resource
