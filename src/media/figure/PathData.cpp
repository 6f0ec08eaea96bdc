#include "media/figure/PathData.h"

namespace Resource {

PathData& PathData::moveTo(double x, double y) {
  commands_.push_back(std::make_unique<PathCommandMoveTo>(x, y));
  return *this;
}

PathData& PathData::lineTo(double x, double y) {
  commands_.push_back(std::make_unique<PathCommandLineTo>(x, y));
  return *this;
}

PathData& PathData::arcTo(double x, double y, double radiusX, double radiusY, double rotation, bool clockwise,
                          bool large) {
  commands_.push_back(std::make_unique<PathCommandArcTo>(x, y, radiusX, radiusY, rotation, clockwise, large));
  return *this;
}

PathData& PathData::bezier2To(double controlX, double controlY, double x, double y) {
  commands_.push_back(std::make_unique<PathCommandBezier2To>(controlX, controlY, x, y));
  return *this;
}

PathData& PathData::closePath() {
  commands_.push_back(std::make_unique<PathCommandClosePath>());
  return *this;
}

void PathData::emit(PathSink& sink, double scaleX, double scaleY, double offsetX, double offsetY) const {
  const double unitX = scaleX / scaleX_;
  const double unitY = scaleY / scaleY_;
  PathEmitter emitter(sink, unitX, unitY, offsetX - originX_ * unitX, offsetY - originY_ * unitY);
  for (const std::unique_ptr<PathCommand>& command : commands_) command->emit(emitter);
  emitter.end(false);
}

}  // namespace Resource
