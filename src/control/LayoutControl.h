// A control that only places its children: the rectangle of the layout rule, scaled
// by fractions of the parent, so rows and columns share a box by proportion.
#pragma once

#include "control/WindowControl.h"

namespace Control {

class LayoutControl : public Window::WindowControl {
 public:
  using Window::WindowControl::WindowControl;

  void setFractions(float x0, float y0, float x1, float y1) noexcept {
    fx0 = x0;
    fy0 = y0;
    fx1 = x1;
    fy1 = y1;
  }
  void place() override;

  float fx0 = 0.0f;
  float fy0 = 0.0f;
  float fx1 = 1.0f;
  float fy1 = 1.0f;
};

}  // namespace Control
