#include "control/LayoutControl.h"

namespace Control {

void LayoutControl::place() {
  if (parent() == nullptr) return;
  const Window::ControlRect box = Window::applyLayout(parent()->rect, layout);
  const auto scaled = [](std::int32_t origin, std::int32_t size, float fraction) {
    return origin + static_cast<std::int32_t>(static_cast<float>(size) * fraction);
  };
  const std::int32_t x0 = scaled(box.x, box.w, fx0);
  const std::int32_t y0 = scaled(box.y, box.h, fy0);
  const std::int32_t x1 = scaled(box.x, box.w, fx1);
  const std::int32_t y1 = scaled(box.y, box.h, fy1);
  rect = {x0, y0, x1 - x0, y1 - y0};
  clipRect = rect.intersected(parent()->clipRect);
}

}  // namespace Control
