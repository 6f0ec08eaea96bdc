// Snapping of the timeline: pulls a dragged frame onto a nearby object edge, section
// point, tempo line or the cursor when one lies within a few pixels. Used by
// Edit::ObjectDrag for every drag step and by the timeline for its drop and menu points.
// Main thread, on rows that update() has ordered.
#pragma once

#include <cstdint>

namespace Edit {

class Scene;
struct DragState;

class Snapping {
 public:
  // The reach in frames, a little over 8 pixels at the scene's zoom.
  static std::int32_t range(const Scene& scene);

  // Looks for a target strictly nearer to `frame` than |best| and gives its distance
  // from `frame` (target - frame); gives `best` back when there is none. Selected objects
  // are no targets. Among equal distances the first found stands: objects row by row
  // from the top, then the tempo line (when `tempoGrid` is shown), then the cursor.
  static std::int32_t nearest(const Scene& scene, std::int32_t frame, std::int32_t best, bool tempoGrid);

  // A single frame, as a drop or the context menu place it.
  static std::int32_t snapFrame(const Scene& scene, std::int32_t frame, bool tempoGrid);

  // A drag's frame step, measured from what the drag's kind moves on its grabbed object:
  // its start and then its end + 1 (the nearer of both wins), the start alone, the end + 1
  // alone, or the grabbed section point. A drag without a grabbed object keeps its step.
  static std::int32_t snapStep(const Scene& scene, const DragState& drag, std::int32_t delta, bool tempoGrid);
};

}  // namespace Edit
