// A vector path in a square of its own, for the built-in figures: the square's corner
// and size, the steps of the outline, and `inset`, the share of the figure's smaller
// side that a stroke may take before the shape is better filled. Built on the main thread
// at start, then read-only: any thread may emit it.
#pragma once

#include <memory>
#include <vector>

#include "media/figure/PathCommand.h"

namespace Resource {

class PathData {
 public:
  PathData(double originX, double originY, double scaleX, double scaleY, double inset) noexcept
      : originX_(originX), originY_(originY), scaleX_(scaleX), scaleY_(scaleY), inset_(inset) {}

  PathData& moveTo(double x, double y);
  PathData& lineTo(double x, double y);
  PathData& arcTo(double x, double y, double radiusX, double radiusY, double rotation, bool clockwise, bool large);
  PathData& bezier2To(double controlX, double controlY, double x, double y);
  PathData& closePath();

  double originX() const noexcept { return originX_; }
  double originY() const noexcept { return originY_; }
  double scaleX() const noexcept { return scaleX_; }
  double scaleY() const noexcept { return scaleY_; }
  double inset() const noexcept { return inset_; }
  const std::vector<std::unique_ptr<PathCommand>>& commands() const noexcept { return commands_; }

  // Writes the outline into `sink` with the square stretched to scaleX by scaleY pixels
  // and its corner at (offsetX, offsetY). A figure left open is ended open.
  void emit(PathSink& sink, double scaleX, double scaleY, double offsetX, double offsetY) const;

 private:
  double originX_;
  double originY_;
  double scaleX_;
  double scaleY_;
  double inset_;
  std::vector<std::unique_ptr<PathCommand>> commands_;
};

}  // namespace Resource
