// The beat and bar lines of a scene's tempo, as the timeline shows them: where the line
// nearest a frame stands, when lines stand far enough apart on screen to be drawn and
// snapped to. Used by Edit::Snapping; pure arithmetic on a scene's values, any thread
// that may read the scene.
#pragma once

#include <cstdint>

namespace Edit {

class Scene;

class TempoGrid {
 public:
  // Lines closer than this many pixels are not drawn, and nothing snaps to them.
  static constexpr std::int64_t kMinimumPixels = 6;
  static constexpr std::int32_t kNone = -1;

  // The beat line nearest `frame` when beats stand kMinimumPixels apart at the scene's
  // zoom, else the nearest bar line when bars do, else kNone. Also kNone when the rate
  // or the beat length is not positive.
  static std::int32_t frameNear(const Scene& scene, std::int32_t frame);
};

}  // namespace Edit
