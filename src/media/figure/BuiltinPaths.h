// The outlines of the built-in figures, each in the square its PathData names: the unit
// square for the rectangle, circle and heart, −1 .. 1 for the polygons and the star,
// which are centred on the origin with their first point straight up.
#pragma once

#include <cstdint>

#include "media/figure/PathData.h"

namespace Resource::BuiltinPaths {

// The star's inner points, on the lines between every second outer point.
inline constexpr double kStarInnerRadius = 0.30901699437494745 / 0.80901699437494745;  // cos 72° / cos 36°

PathData rectangle();
PathData circle();
// A regular polygon of 3, 5 or 6 corners; its inset is the radius of its inscribed circle.
PathData polygon(std::int32_t corners);
PathData star();
PathData heart();

}  // namespace Resource::BuiltinPaths
