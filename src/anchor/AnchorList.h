// The handles that effects declare on the preview for one frame: the render worker's
// object tasks add them while drawing, and the preview copies the list it is handed with
// the frame. Plain data; whoever holds a list owns it and guards it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Edit {
class Object;
}
namespace Effect {
class EffectBase;
}

namespace Anchor {

using Point = std::pair<float, float>;
using Float4 = std::array<float, 4>;

struct AnchorItem {
  std::int32_t kind = 0;
  std::shared_ptr<Edit::Object> object;         // null for grid lines
  std::shared_ptr<Effect::EffectBase> effect;   // handles the events; null for grid lines
  std::uint32_t code = 0;                       // which handle of the effect
  std::uint32_t flags = 0;
  std::int32_t imageIndex = 0;                  // kind 1: the icon
  Float4 colour{};                              // kinds 3 and 10
  std::vector<Point> points;                    // picture coordinates -1..1, y up
  std::vector<Point> snapPoints;
  std::array<float, 16> transform{};            // how the effect projected the item
  Float4 base{};
  Float4 axis{};
  Float4 handleScale{};
  Float4 extra{};
  std::string name;                             // the tool tip
  std::vector<Point> screenPoints;              // `points` in control pixels
  Point centre{};
  float radius = 0.0f;
};

using AnchorList = std::vector<AnchorItem>;

}  // namespace Anchor
