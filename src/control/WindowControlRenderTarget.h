// A control that can draw: paint opens its own draw scope on the window's target, so a
// control that changes repaints itself alone, then draws its children over it.
#pragma once

#include "control/ControlStyle.h"
#include "control/WindowControl.h"

namespace Window {

class WindowControlRenderTarget : public WindowControl {
 public:
  using WindowControl::WindowControl;

  void paint() override;

 protected:
  // Draws the control with the origin at its top left corner, clipped to it.
  virtual void draw(Media::RenderTarget& target, const ControlStyle& style) = 0;
  // A rectangle of the control's own size at the origin.
  Media::RectF bounds() const noexcept {
    return {0.0f, 0.0f, static_cast<float>(rect.w), static_cast<float>(rect.h)};
  }
};

}  // namespace Window
