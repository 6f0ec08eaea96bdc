// Where the handles of a frame stand on the preview and which one the mouse is over:
// the items' picture coordinates (-1..1, y up) mapped into the pixels of the picture's
// rectangle, with the corrections that keep small or crowded handles usable, and the
// hit test that picks one item under the mouse. Plain geometry, on the window thread.
#pragma once

#include <cstdint>

#include "anchor/AnchorList.h"

namespace Edit {
class Object;
}

namespace Anchor {

// The picture's rectangle in control pixels.
struct PictureRect {
  float left = 0.0f;
  float top = 0.0f;
  float right = 0.0f;
  float bottom = 0.0f;
};

inline constexpr std::uint32_t kCornerIconFlag = 0x20000;
inline constexpr std::uint32_t kNotHitFlag = 0x10000000;

// Fills screenPoints, centre and radius of every item (and the handle scale of kind 4)
// for a picture shown in `picture` on a control `controlWidth` pixels wide.
void layoutAnchors(AnchorList& items, const PictureRect& picture, float controlWidth);

// Whether the hit zone of a laid-out item holds (x, y).
bool hits(const AnchorItem& item, float x, float y);

// The item under (x, y): of those whose zone holds it, the least by kind, then by the
// squared distance to its centre plus twice its radius, then those of `focus` first,
// then the lower code. Null when none.
const AnchorItem* hitTest(const AnchorList& items, float x, float y, const Edit::Object* focus);

}  // namespace Anchor
