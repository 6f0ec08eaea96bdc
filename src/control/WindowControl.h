// A control of the hand-drawn toolkit: the tree, the flags the mouse service reads and
// the layout rule that places a control inside its parent. Controls hold no platform
// object; they reach their window through the mouse service. Main thread only.
#pragma once

#include <cstdint>
#include <vector>

#include "control/WindowMouse.h"

namespace Window {

class WindowMouseService;

// Pixels of the window's canvas.
struct ControlRect {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t w = 0;
  std::int32_t h = 0;
  bool contains(std::int32_t px, std::int32_t py) const noexcept {
    return px >= x && py >= y && px < x + w && py < y + h;
  }
  ControlRect intersected(const ControlRect& other) const noexcept;
  friend bool operator==(const ControlRect&, const ControlRect&) = default;
};

// A negative left or top counts from the parent's far edge; a right or bottom of 1 or
// more is a size, one below 1 an inset from the parent's far edge.
struct ControlLayout {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
};

// The rectangle the layout gives inside `parent`.
ControlRect applyLayout(const ControlRect& parent, const ControlLayout& layout) noexcept;

class WindowControl : public WindowMouse {
 public:
  // A control with a parent joins the end of its children and its mouse service.
  explicit WindowControl(WindowControl* parent);
  ~WindowControl() override;
  WindowControl(const WindowControl&) = delete;
  WindowControl& operator=(const WindowControl&) = delete;

  // Draws itself and its children; the base only draws the children.
  virtual void paint();
  // Places each child and lays it out in turn.
  virtual void layoutChildren();
  // Works out `rect` and `clipRect` from the parent and `layout`.
  virtual void place();

  void setLayout(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) noexcept {
    layout = {left, top, right, bottom};
  }
  // Shows or hides the control and paints what changed.
  void setVisible(bool shown);
  void setEnabled(bool on);
  // Both this one and every parent shown.
  bool shown() const noexcept;

  WindowControl* parent() const noexcept { return parent_; }
  const std::vector<WindowControl*>& children() const noexcept { return children_; }
  std::int32_t depth() const noexcept { return depth_; }
  WindowMouseService* service() const noexcept { return service_; }

  bool pressed = false;
  bool hovered = false;
  bool focused = false;
  bool enabled = true;
  bool visible = true;
  bool acceptsContextMenu = false;
  bool acceptsFocus = false;
  bool acceptsWheel = false;
  bool acceptsFiles = false;
  ControlRect clipRect;  // the part inside the parent's view
  ControlRect rect;
  ControlLayout layout;

 protected:
  // The root of a window's tree, owned by its mouse service.
  explicit WindowControl(WindowMouseService& service);

 private:
  void detachFromService() noexcept;

  WindowMouseService* service_ = nullptr;
  WindowControl* parent_ = nullptr;
  std::vector<WindowControl*> children_;
  std::int32_t depth_ = 0;
};

}  // namespace Window
