#include "media/figure/PathCommand.h"

namespace Resource {

void PathEmitter::begin(double x, double y) {
  end(false);
  sink_.beginFigure(x, y);
  open_ = true;
}

void PathEmitter::end(bool closed) {
  if (!open_) return;
  sink_.endFigure(closed);
  open_ = false;
}

void PathCommandMoveTo::emit(PathEmitter& emitter) const { emitter.begin(emitter.x(x_), emitter.y(y_)); }

void PathCommandLineTo::emit(PathEmitter& emitter) const {
  emitter.sink().addLine(emitter.x(x_), emitter.y(y_));
}

void PathCommandArcTo::emit(PathEmitter& emitter) const {
  emitter.sink().addArc(emitter.x(x_), emitter.y(y_), emitter.width(radiusX_), emitter.height(radiusY_), rotation_,
                        clockwise_, large_);
}

void PathCommandBezier2To::emit(PathEmitter& emitter) const {
  emitter.sink().addQuadraticBezier(emitter.x(controlX_), emitter.y(controlY_), emitter.x(x_), emitter.y(y_));
}

void PathCommandClosePath::emit(PathEmitter& emitter) const { emitter.end(true); }

}  // namespace Resource
