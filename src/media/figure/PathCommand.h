// The steps of a vector path (Resource::PathData): each writes itself into a sink
// through the emitter, which maps the path's own square onto the target and keeps
// track of the open figure. Immutable once made; any thread may emit them.
#pragma once

#include "media/figure/PathSink.h"

namespace Resource {

// One emission of a path: the mapping from the path's square to pixels, and whether a
// figure is open in the sink.
class PathEmitter {
 public:
  PathEmitter(PathSink& sink, double scaleX, double scaleY, double offsetX, double offsetY) noexcept
      : sink_(sink), scaleX_(scaleX), scaleY_(scaleY), offsetX_(offsetX), offsetY_(offsetY) {}

  PathSink& sink() noexcept { return sink_; }
  double x(double value) const noexcept { return value * scaleX_ + offsetX_; }
  double y(double value) const noexcept { return value * scaleY_ + offsetY_; }
  double width(double value) const noexcept { return value * scaleX_; }
  double height(double value) const noexcept { return value * scaleY_; }

  void begin(double x, double y);
  // Ends the open figure, if any.
  void end(bool closed);

 private:
  PathSink& sink_;
  double scaleX_;
  double scaleY_;
  double offsetX_;
  double offsetY_;
  bool open_ = false;
};

class PathCommand {
 public:
  virtual ~PathCommand() = default;
  virtual void emit(PathEmitter& emitter) const = 0;
};

class PathCommandMoveTo : public PathCommand {
 public:
  PathCommandMoveTo(double x, double y) noexcept : x_(x), y_(y) {}
  void emit(PathEmitter& emitter) const override;

 private:
  double x_;
  double y_;
};

class PathCommandLineTo : public PathCommand {
 public:
  PathCommandLineTo(double x, double y) noexcept : x_(x), y_(y) {}
  void emit(PathEmitter& emitter) const override;

 private:
  double x_;
  double y_;
};

// Radii are in the path's square and scale with it; the rotation is in degrees.
class PathCommandArcTo : public PathCommand {
 public:
  PathCommandArcTo(double x, double y, double radiusX, double radiusY, double rotation, bool clockwise,
                   bool large) noexcept
      : x_(x), y_(y), radiusX_(radiusX), radiusY_(radiusY), rotation_(rotation), clockwise_(clockwise),
        large_(large) {}
  void emit(PathEmitter& emitter) const override;

 private:
  double x_;
  double y_;
  double radiusX_;
  double radiusY_;
  double rotation_;
  bool clockwise_;
  bool large_;
};

class PathCommandBezier2To : public PathCommand {
 public:
  PathCommandBezier2To(double controlX, double controlY, double x, double y) noexcept
      : controlX_(controlX), controlY_(controlY), x_(x), y_(y) {}
  void emit(PathEmitter& emitter) const override;

 private:
  double controlX_;
  double controlY_;
  double x_;
  double y_;
};

class PathCommandClosePath : public PathCommand {
 public:
  void emit(PathEmitter& emitter) const override;
};

}  // namespace Resource
