#include "edit/TempoGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "edit/Scene.h"

namespace Edit {

namespace {

// Far enough out that any real grid is inside, near enough that the pixel product of
// the largest zoom stays within 64 bits.
constexpr double kFrameBound = 1e13;

std::int64_t cutFrame(double frame) { return static_cast<std::int64_t>(std::clamp(frame, -kFrameBound, kFrameBound)); }

// The pixel column of a frame as the timeline draws it: rounded, relative to the view.
std::int64_t pixelOf(double frame, const Scene& scene) {
  return ((cutFrame(frame) - scene.displayFrame) * scene.displayZoom() + 5000) / 10000;
}

bool wideEnough(double origin, double step, const Scene& scene) {
  return pixelOf(origin + step, scene) - pixelOf(origin, scene) >= TempoGrid::kMinimumPixels;
}

std::int32_t nearestLine(double frame, double origin, double step) {
  const double line = std::round((frame - origin) / step) * step + origin;
  const double cut = std::trunc(line);
  if (!(cut >= std::numeric_limits<std::int32_t>::min() && cut <= std::numeric_limits<std::int32_t>::max())) {
    return TempoGrid::kNone;
  }
  return static_cast<std::int32_t>(cut);
}

}  // namespace

std::int32_t TempoGrid::frameNear(const Scene& scene, std::int32_t frame) {
  const double rate = scene.videoRate;
  // The stored tempo is single precision, and so is its product with the scale; only
  // the division is done in double, so lines land where the drawing puts them.
  const float perMinute = static_cast<float>(scene.videoScale) * scene.tempoBeatPerMinute;
  const double beat = rate * 60.0 / static_cast<double>(perMinute);
  if (!(rate > 0.0) || !(beat > 0.0) || !std::isfinite(beat)) return kNone;
  const double bar = beat * scene.tempoBeat;
  const double origin = rate * static_cast<double>(scene.tempoOffset) / scene.videoScale;
  if (!std::isfinite(origin)) return kNone;
  if (wideEnough(origin, beat, scene)) return nearestLine(frame, origin, beat);
  if (wideEnough(origin, bar, scene)) return nearestLine(frame, origin, bar);
  return kNone;
}

}  // namespace Edit
